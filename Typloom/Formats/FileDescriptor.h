#pragma once

#include <utility>

#include <unistd.h>

/// Closes what it holds. A negative number stands for nothing.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    ~FileDescriptor() { close(); }
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        close();
        m_descriptor = std::exchange(other.m_descriptor, -1);
        return *this;
    }
    int get() const { return m_descriptor; }

private:
    void close() const
    {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }

    int m_descriptor;
};
