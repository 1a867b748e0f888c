#pragma once

#include "Typloom/TyploomApp/TLLineEditView.h"

class QWidget;

/// The controls above the edit view: text, glyph and master. Each shows what the edit view shows.
class TLDocumentToolbar {
public:
    TLDocumentToolbar(std::shared_ptr<TLEditState> state, std::shared_ptr<TLLineEditView> view);
    ~TLDocumentToolbar();
    TLDocumentToolbar(TLDocumentToolbar const&) = delete;

    QWidget* widget() const;
    /// Brings all controls up to date with the edit view.
    void update();

    /// As if the user had put the text into the field.
    void setText(std::string const& text);
    /// Puts the glyph in the place of the edited one. False when the font has none of that name.
    bool chooseGlyph(std::string const& name);
    /// The glyph that many places on in the font's order; stops at the ends.
    void chooseNeighbouringGlyph(std::ptrdiff_t distance);
    void focusTextField();
    void focusGlyphField();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
