#pragma once

#include "Typloom/TyploomCore/TLFont.h"

/// Undo and redo of a document, and what of it differs from its files.
///
/// Document objects tell the history before they change. Everything that changes within one turn of the
/// main queue is one step; renaming one axis is one step however many turns it takes, until `endStep`.
class TYPLOOM_API TLDocumentHistory {
public:
    explicit TLDocumentHistory(TLFont& font);
    ~TLDocumentHistory();
    TLDocumentHistory(TLDocumentHistory const&) = delete;

    bool canUndo() const;
    bool canRedo() const;
    /// What the step does, for a menu: "Rename Axis". Empty when there is none.
    std::string undoTitle() const;
    std::string redoTitle() const;
    void undo();
    void redo();

    /// What changes from now on belongs to another step.
    void endStep();
    /// Until `endGesture` all changes are one step: a drag takes many turns. Gestures can be nested.
    void beginGesture();
    void endGesture();

    /// Whether anything differs from what was last saved or read.
    bool isModified() const;
    /// The glyphs that differ, by name, with the state in which they were last saved or read.
    std::map<std::string, TLGlyphState> modifiedGlyphs() const;
    /// The state in which the font itself was last saved or read.
    TLFontState savedFont() const;
    std::vector<TLAxisState> savedAxes() const; ///< Of the font; without the masters, which can be many.
    /// The document is now as in its files.
    void didSave();
    /// A glyph is now as in its files, which another program has changed. The steps
    /// that touched it, and those before them, can't be undone any more.
    void didReload(TLGlyph const& glyph);
    /// Layers of a glyph were drawn by another program, in files and document alike; what else is not saved
    /// stays so. By layer: how it was drawn and how it is now. Steps in which it was drawn so can be undone.
    using Redrawn = std::map<std::string, std::pair<TLOutline, TLOutline>>;
    void didReloadOutlines(std::string const& glyphName, Redrawn const& layers);
    /// The same of the font itself.
    void didReloadFont();
    /// Nothing can be undone, and the document is as in its files.
    void clear();

    /// Called by document objects before a change.
    void glyphWillChange(TLGlyph const& glyph);
    void fontWillChange();

private:
    /// States of what a step touches, before it or after it.
    struct States {
        std::map<std::string, TLGlyphState> glyphs;
        std::optional<TLFontState> font;
        bool operator==(States const&) const = default;
    };
    struct Step {
        States before;
        States after;
        std::string title;
        std::string renamedAxis; ///< Identifier, when renaming that axis is all that the step does.
    };

    bool records() const;
    void closeTurn();
    void closeStep();
    void reopenRename();
    States statesNowOf(States const& touched) const;
    void dropUnchanged(Step& step) const;
    void push(Step step);
    void apply(States const& states);
    bool isOpen() const { return m_open.font || !m_open.glyphs.empty(); }
    std::shared_ptr<TLGlyph> glyphNamed(std::string const& name) const;
    void forgetSteps(std::function<bool(Step const&)> const& touches);

    TLFont& m_font;
    std::vector<Step> m_undo;
    std::vector<Step> m_redo;
    States m_open; ///< Before the changes of the step that is still growing.
    bool m_turnIsScheduled { false };
    int m_gestures { 0 };
    bool m_isApplying { false };
    bool m_joinsRenames { false }; ///< Whether the last step may still grow by renaming the same axis.
    /// Found by the first keystroke of a rename; none between edits, since other programs may write glyphs.
    std::optional<std::vector<std::string>> m_glyphsWithLocations;
    States m_saved; ///< Of what has been touched since.
};
