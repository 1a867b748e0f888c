#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <QTemporaryDir>

inline void writeFile(std::filesystem::path const& path, std::string const& text)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string readFile(std::filesystem::path const& path)
{
    std::ifstream stream(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

/// A folder that lives as long as the test.
class TestFolder {
public:
    std::filesystem::path operator/(std::string const& name) const
    {
        return m_folder.path().toStdString() + "/" + name;
    }
    std::filesystem::path path() const { return m_folder.path().toStdString(); }

private:
    QTemporaryDir m_folder;
};

/// Lays out `NAME.bundle/` with a description and a copy of a library.
inline std::filesystem::path makeBundle(TestFolder const& folder, std::string const& name,
    std::string const& principalClass, std::string const& library)
{
    auto const bundle = folder / (name + ".bundle");
    writeFile(bundle / "Info.strings",
        "\"PrincipalClass\" = \"" + principalClass + "\";\n\"Library\" = \"plugin.so\";\n");
    std::filesystem::copy_file(library, bundle / "plugin.so");
    return bundle;
}
