#pragma once

#include "Typloom/Formats/FamilyDraft.h"
#include "Typloom/Formats/FolderCopy.h"

/// Brings the files of a family into another folder as they lie on disk. What is gone from there is made of
/// what was read of it.
class FamilyCopySources {
public:
    using Path = std::filesystem::path;
    /// `saved`: of the glyphs that have changes, the states in which they were last saved or read.
    FamilyCopySources(
        TLFont const& font, FamilyGlyphSource const& family, FolderCopy& copy, Path designspace);

    /// Throws a `SaveProblem`.
    void run();
    /// The family of the copy, with its glyphs' origins. Throws a `SaveProblem`.
    std::shared_ptr<FamilyGlyphSource> family() const;
    bool hasLostFiles() const { return m_hasLostFiles; }
    std::vector<std::string> const& notes() const { return m_notes; }

private:
    void nameUfos(XmlEdit& designspace);
    std::string freeName(Path const& like) const;
    void copyUfo(std::string const& filename, std::string const& newName);
    void makeUfo(Ufo const& ufo, std::string const& newName);
    std::size_t makeLayer(Ufo const& ufo, UfoLayer const& layer, Path const& folder);
    std::optional<std::string> glyphText(
        Ufo const& ufo, UfoLayer const& layer, std::string const& name) const;
    void write(Path const& path, std::string const& text);

    TLFont const& m_font;
    FamilyGlyphSource const& m_source;
    FolderCopy& m_copy;
    Path m_designspace; ///< Of the copy.
    std::map<std::string, std::string> m_newNames; ///< Of the UFOs, by the name in the family's designspace.
    std::map<std::string, TLGlyphState> m_saved; ///< Glyphs with changes, as they were saved.
    std::vector<std::string> m_notes;
    bool m_hasLostFiles { false };
};
