#pragma once

// File readers for the sysfs and procfs readers' tests. Tests run as root,
// where mode 000 stops no read, so refusals are made here.

#include "platform/linux/SysfsDirectory.h"

#include <QString>

#include <memory>
#include <vector>

// <tests/fixtures>/<machine>/sys
QString fixtureSys(const char *machine);

// The system reader, except that files whose path ends with one of `endings`
// fail with `error`: EACCES for a refusal, ENOENT for a file that vanished
// after the directory was listed.
KernelFileReader failingReader(std::vector<QByteArray> endings, int error);

// The system reader, noting every path it is asked for in `opened`.
KernelFileReader recordingReader(std::shared_ptr<std::vector<QByteArray>> opened);
