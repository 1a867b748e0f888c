#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

/// In memory where the machine has such a folder: some disks are waited for at each save.
inline std::filesystem::path quickFolder()
{
    return std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
}

/// A new folder that goes with the object.
class TemporaryFolder {
public:
    explicit TemporaryFolder(std::filesystem::path const& parent = std::filesystem::temp_directory_path())
    {
        std::string pattern = (parent / "typloom-test-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    std::filesystem::path const& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};
