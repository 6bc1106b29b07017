#pragma once

#include <QByteArray>

#include <fcntl.h>
#include <unistd.h>

// Writes `mebibytes` MiB to a new file at `path` and syncs it to the disk,
// so the writes show in the disk counters and this process's I/O account.
// False when any step fails.
inline bool writeSynced(const QByteArray &path, int mebibytes)
{
    const int fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    const QByteArray chunk(1 << 20, 'k');
    bool written = true;
    for (int i = 0; i < mebibytes && written; ++i)
        written = ::write(fd, chunk.constData(), std::size_t(chunk.size())) == chunk.size();
    written = written && ::fsync(fd) == 0;
    ::close(fd);
    return written;
}
