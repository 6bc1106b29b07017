#pragma once

#include <unistd.h>

// Owns one file descriptor (a file, a /proc directory, a pidfd) and closes it.
class UniqueFileDescriptor {
public:
    explicit UniqueFileDescriptor(int fd = -1) : m_fd(fd) {}
    ~UniqueFileDescriptor() { reset(); }
    UniqueFileDescriptor(UniqueFileDescriptor &&other) noexcept : m_fd(other.release()) {}
    UniqueFileDescriptor &operator=(UniqueFileDescriptor &&other) noexcept
    {
        if (this != &other) {
            reset();
            m_fd = other.release();
        }
        return *this;
    }
    UniqueFileDescriptor(const UniqueFileDescriptor &) = delete;
    UniqueFileDescriptor &operator=(const UniqueFileDescriptor &) = delete;

    int get() const { return m_fd; }
    bool isValid() const { return m_fd >= 0; }
    int release()
    {
        const int fd = m_fd;
        m_fd = -1;
        return fd;
    }
    void reset()
    {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = -1;
    }

private:
    int m_fd;
};
