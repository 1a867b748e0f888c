#pragma once

#include "Typloom/TyploomApp/TLGlyphEditView.h"

#include <optional>
#include <string>
#include <vector>

/// One glyph in the text of an edit view, and which of its layers is shown there.
struct TLGlyphObject {
    std::string glyphName;
    std::string layerId; ///< The glyph need not have that layer.
    bool operator==(TLGlyphObject const&) const = default;
};

/// The text of an edit view: glyph objects in a row, and a selection among them.
///
/// The object at the start of the selection is the edited one. There is none while the text is empty or
/// the cursor stands behind the last object.
class TYPLOOM_API TLTextLine {
public:
    std::vector<TLGlyphObject> const& objects() const { return m_objects; }
    NSRange selectedRange() const { return m_selection; }
    std::optional<std::size_t> editedIndex() const;
    TLGlyphObject const* editedObject() const; ///< Null when there is none.

    /// Replaces the whole text. The cursor is brought into the text; it may stand behind the last object.
    void setObjects(std::vector<TLGlyphObject> objects, std::size_t cursor);
    void replaceObject(std::size_t index, TLGlyphObject object);
    void insertObject(std::size_t index, TLGlyphObject object);
    /// Selects the part of the range that lies in the text.
    void select(NSRange range);
    /// The selection (the edited object, where nothing is selected) stretched so far that it holds that
    /// object.
    NSRange rangeReaching(std::size_t index) const;

    void setLayer(std::size_t index, std::string layerId);
    void setLayerOfAll(std::string const& layerId);

private:
    std::vector<TLGlyphObject> m_objects;
    NSRange m_selection;
};
