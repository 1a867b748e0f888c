#pragma once

#include "Typloom/Formats/FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <limits>

#include <fcntl.h>

/// The machine's file system, until the call of a given number. Waits for no disk.
class FaultyFileSystem final : public FileSystem {
public:
    enum class Fault {
        once, ///< That call fails.
        full, ///< From there on nothing can be made or written; all else goes on.
        crash ///< From there on nothing happens any more; that call, if it writes, does half its work.
    };
    FaultyFileSystem(int call, Fault fault, int problem)
        : m_remaining(call)
        , m_fault(fault)
        , m_problem(problem)
    {
    }
    /// One that never fails, and so is only quick.
    FaultyFileSystem()
        : FaultyFileSystem(std::numeric_limits<int>::max(), Fault::once, 0)
    {
    }
    bool wasReached() const { return m_remaining <= 0; }

    int open(int folder, std::string const& name, int flags, unsigned mode) override
    {
        return fails((flags & O_CREAT) != 0) ? -m_problem : FileSystem::open(folder, name, flags, mode);
    }
    std::ptrdiff_t write(int file, std::string_view bytes) override
    {
        bool const wasCrashed = wasReached();
        if (!fails(true)) {
            return FileSystem::write(file, bytes.substr(0, std::max<std::size_t>(1, bytes.size() / 2)));
        }
        if (m_fault != Fault::once && !wasCrashed) {
            FileSystem::write(file, bytes.substr(0, bytes.size() / 2));
        }
        return -m_problem;
    }
    int synchronize(int /*descriptor*/) override { return fails(true) ? -m_problem : 0; }
    int synchronizeDisk(int /*descriptor*/) override { return fails(true) ? -m_problem : 0; }
    int setMode(int file, unsigned mode) override
    {
        return fails(false) ? -m_problem : FileSystem::setMode(file, mode);
    }
    int rename(int folder, std::string const& name, std::string const& newName) override
    {
        return fails(false) ? -m_problem : FileSystem::rename(folder, name, newName);
    }
    int removeFile(int folder, std::string const& name) override
    {
        return fails(false) ? -m_problem : FileSystem::removeFile(folder, name);
    }
    int removeFolder(int folder, std::string const& name) override
    {
        return fails(false) ? -m_problem : FileSystem::removeFolder(folder, name);
    }
    int makeFolder(int folder, std::string const& name) override
    {
        return fails(true) ? -m_problem : FileSystem::makeFolder(folder, name);
    }

private:
    bool fails(bool takesRoom)
    {
        --m_remaining;
        return m_remaining == 0
            ? m_fault != Fault::full || takesRoom
            : m_remaining < 0 && m_fault != Fault::once && (takesRoom || m_fault == Fault::crash);
    }

    int m_remaining;
    Fault m_fault;
    int m_problem;
};
