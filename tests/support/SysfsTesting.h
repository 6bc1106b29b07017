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

// The call counters of the stand-in NVML library (tests/fakes), reached
// through a handle of our own: a second dlopen of the same path shares the
// probe's copy of the library, and with it the counts.
class FakeNvmlCounters {
public:
    explicit FakeNvmlCounters(const char *libraryPath);
    ~FakeNvmlCounters();
    FakeNvmlCounters(const FakeNvmlCounters &) = delete;
    FakeNvmlCounters &operator=(const FakeNvmlCounters &) = delete;

    int calls() const { return count("kwFakeNvmlCalls"); } // every NVML function
    int initCalls() const { return count("kwFakeNvmlInitCalls"); }
    int shutdownCalls() const { return count("kwFakeNvmlShutdownCalls"); }

private:
    int count(const char *counter) const;
    void *m_handle;
};
