#pragma once

#include "Benchmarks/SyntheticFamily.h"

#include <filesystem>

/// A synthetic family in files, in a temporary folder that is removed at the end.
class FamilyFiles {
public:
    /// `glyphs` in every master, beside "big"; its intermediate layers are sources of the designspace, or
    /// of the glyph where it has axes of its own.
    FamilyFiles(FamilySize const& size, std::size_t glyphs);
    ~FamilyFiles();
    FamilyFiles(FamilyFiles const&) = delete;

    std::filesystem::path designspace() const { return m_folder / "Synthetic.designspace"; }
    std::size_t countOfFiles() const { return m_countOfFiles; }

private:
    void write(std::filesystem::path const& path, std::string const& text);
    void writeMaster(FamilySize const& size, std::size_t master, std::size_t glyphs);
    void writeDesignspace(FamilySize const& size);
    std::string bigGlyphLib(FamilySize const& size) const;

    std::filesystem::path m_folder;
    std::size_t m_countOfFiles { 0 };
};
