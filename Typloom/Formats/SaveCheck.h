#pragma once

#include "Typloom/Formats/FamilySavePlan.h"

/// Reads what a plan would write as if it were on disk, and compares it with the document.
class SaveCheck {
public:
    SaveCheck(TLFont& font, FamilyGlyphSource& family, FamilySavePlan const& plan);

    /// Throws a `SaveProblem` when anything of what is written would be read back as something else. When
    /// other programs have changed files, only outlines that the document has changed are compared.
    void run(FamilyFiles::Pending const& pending, bool filesHaveChanged);
    /// The family with its new structure; none when the plan leaves that as it is.
    std::optional<Family> const& newFamily() const { return m_newFamily; }

private:
    void readFamily(FamilyFiles::Pending const& pending);
    void compareFont(TLFont const& read) const;
    void compareGlyph(std::string const& name, bool filesHaveChanged) const;
    TLOutline const& wantedOutline(std::string const& glyph, TLLayerState const& layer) const;

    TLFont& m_font;
    FamilyGlyphSource& m_family;
    FamilySavePlan const& m_plan;
    std::shared_ptr<TLFont> m_read; ///< The document itself when its structure stays.
    std::optional<Family> m_newFamily;
};
