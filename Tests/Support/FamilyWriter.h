#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <fstream>
#include <map>
#include <vector>

/// Writes a family into a temporary folder: one axis "weight" from 0 to 1000, the masters "light"
/// (the default, in Light.ufo) and "bold" (in Bold.ufo), each with the glyphs "A" and "B". A test
/// changes the fields first, or single files afterwards.
class FamilyWriter {
public:
    std::string axes = R"(<axis tag="wght" name="weight" minimum="0" maximum="1000" default="0"/>)";
    std::string sources = source("Light.ufo", "light", "0") + source("Bold.ufo", "bold", "1000");

    static std::string source(std::string const& filename, std::string const& name, std::string const& weight,
        std::string const& more = {})
    {
        return "<source filename=\"" + filename + "\" name=\"" + name + "\" " + more
            + "><location><dimension name=\"weight\" xvalue=\"" + weight + "\"/></location></source>\n";
    }

    std::filesystem::path designspacePath() const { return m_folder.path() / "family" / "Test.designspace"; }
    std::filesystem::path path(std::string const& relativePath) const
    {
        return m_folder.path() / "family" / relativePath;
    }

    /// Paths are relative to the family's folder.
    void write(std::string const& relativePath, std::string const& content) const
    {
        std::filesystem::create_directories(path(relativePath).parent_path());
        std::ofstream(path(relativePath), std::ios::binary) << content;
    }
    std::string read(std::string const& relativePath) const
    {
        std::ifstream file(path(relativePath), std::ios::binary);
        return { std::istreambuf_iterator<char>(file), {} };
    }
    void remove(std::string const& relativePath) const { std::filesystem::remove_all(path(relativePath)); }

    /// The designspace and both UFOs.
    void writeFamily() const
    {
        writeDesignspace();
        writeUfo("Light.ufo", 100);
        writeUfo("Bold.ufo", 200);
    }

    void writeDesignspace() const
    {
        write("Test.designspace",
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<designspace format=\"5.0\">\n<axes>\n" + axes
                + "\n</axes>\n<sources>\n" + sources + "</sources>\n</designspace>\n");
    }

    /// A UFO 3 with the glyphs "A" and "B", of that advance width.
    void writeUfo(std::string const& ufo, int width) const
    {
        write(ufo + "/metainfo.plist", plist("<dict><key>formatVersion</key><integer>3</integer></dict>"));
        writeLayers(ufo, { { "public.default", "glyphs" } });
        writeLayer(ufo + "/glyphs",
            { { "A", glif("A", triangle(width), width) }, { "B", glif("B", triangle(width), width) } });
    }

    /// Pairs of layer name and directory.
    void writeLayers(
        std::string const& ufo, std::vector<std::pair<std::string, std::string>> const& layers) const
    {
        std::string entries;
        for (auto const& [name, directory] : layers) {
            entries += "<array><string>" + name + "</string><string>" + directory + "</string></array>";
        }
        write(ufo + "/layercontents.plist", plist("<array>" + entries + "</array>"));
    }

    /// Writes each glyph under its name and ".glif", and the list of contents.
    void writeLayer(std::string const& directory, std::map<std::string, std::string> const& glyphs) const
    {
        std::map<std::string, std::string> files;
        for (auto const& [name, content] : glyphs) {
            files[name] = name + ".glif";
            write(directory + "/" + files[name], content);
        }
        writeContents(directory, files);
    }

    void writeContents(std::string const& directory, std::map<std::string, std::string> const& files) const
    {
        std::string entries;
        for (auto const& [name, file] : files) {
            entries += "<key>" + name + "</key><string>" + file + "</string>";
        }
        write(directory + "/contents.plist", plist("<dict>" + entries + "</dict>"));
    }

    static std::string plist(std::string const& value)
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST "
               "1.0//EN\" "
               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n"
            + value + "\n</plist>\n";
    }

    /// `library` is the content of the glyph's library dictionary.
    static std::string glif(
        std::string const& name, std::string const& outline, int width, std::string const& library = {})
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<glyph name=\"" + name
            + "\" format=\"2\">\n<advance width=\"" + std::to_string(width) + "\"/>\n<outline>\n" + outline
            + "</outline>\n" + (library.empty() ? "" : "<lib><dict>" + library + "</dict></lib>\n")
            + "</glyph>\n";
    }

    static std::string triangle(int width)
    {
        return "<contour>\n" + point("0", "0") + point(std::to_string(width), "0") + point("0", "700")
            + "</contour>\n";
    }

    static std::string point(std::string const& x, std::string const& y)
    {
        return "<point x=\"" + x + "\" y=\"" + y + "\" type=\"line\"/>\n";
    }

private:
    TemporaryFolder m_folder;
};
