#pragma once

#include "Tests/Support/FilesIn.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Typloom/Formats/FileTransaction.h"

/// Files of a family as a save sees them, and a save that does all that one can do. "Bold.ufo" is a
/// link to a folder elsewhere.
class SavedFamily {
public:
    using Snapshot = std::map<std::string, std::string>;

    SavedFamily()
        : SavedFamily(quickFolder())
    {
    }
    explicit SavedFamily(std::filesystem::path const& parent)
        : m_folder(parent)
    {
        for (auto const* const folder :
            { "family/Light.ufo/glyphs", "family/Light.ufo/glyphs.old", "store/Bold/glyphs" }) {
            std::filesystem::create_directories(m_folder.path() / folder);
        }
        std::filesystem::create_directory_symlink(m_folder.path() / "store/Bold", path("Bold.ufo"));
        for (auto const* const file : { "Test.designspace", "Light.ufo/glyphs/A_.glif",
                 "Light.ufo/glyphs/B_.glif", "Light.ufo/glyphs/contents.plist", "Light.ufo/glyphs.old/a.glif",
                 "Bold.ufo/glyphs/A_.glif" }) {
            put(file, std::string("old ") + file);
        }
        m_old = snapshot();
    }

    std::filesystem::path path(std::string const& relativePath) const
    {
        return m_folder.path() / "family" / relativePath;
    }
    std::filesystem::path designspace() const { return path("Test.designspace"); }
    void put(std::string const& relativePath, std::string const& content) const
    {
        std::ofstream(path(relativePath), std::ios::binary) << content;
    }

    void addChanges(FileTransaction& save) const
    {
        auto const light = path("Light.ufo");
        save.makeFolder(light, "glyphs.new");
        save.write(light, "glyphs.new/a.glif", "new a");
        save.write(light, "glyphs/A_.glif", "new A");
        save.write(light, "glyphs/contents.plist", "new contents");
        save.write(path("Bold.ufo"), "glyphs/A_.glif", "new bold A");
        save.write(path("."), "Test.designspace", "new designspace");
        save.remove(light, "glyphs/B_.glif");
        save.remove(light, "glyphs.old/a.glif");
        save.remove(light, "glyphs/gone.glif");
        save.removeFolder(light, "glyphs.old");
    }

    /// Content by path; of folders and links what they are.
    Snapshot snapshot() const
    {
        Snapshot files;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(m_folder.path())) {
            auto const name = entry.path().lexically_relative(m_folder.path()).string();
            files[name] = entry.is_symlink() ? "link"
                : entry.is_directory()       ? "folder"
                                             : contentOf(entry.path());
        }
        return files;
    }

    Snapshot const& oldFiles() const { return m_old; }
    Snapshot newFiles() const
    {
        auto files = m_old;
        for (auto const* const gone :
            { "Light.ufo/glyphs/B_.glif", "Light.ufo/glyphs.old/a.glif", "Light.ufo/glyphs.old" }) {
            files.erase(std::string("family/") + gone);
        }
        files["family/Light.ufo/glyphs.new"] = "folder";
        files["family/Light.ufo/glyphs.new/a.glif"] = "new a";
        files["family/Light.ufo/glyphs/A_.glif"] = "new A";
        files["family/Light.ufo/glyphs/contents.plist"] = "new contents";
        files["store/Bold/glyphs/A_.glif"] = "new bold A";
        files["family/Test.designspace"] = "new designspace";
        return files;
    }

private:
    TemporaryFolder m_folder;
    Snapshot m_old;
};
