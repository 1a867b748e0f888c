#pragma once

#include "Typloom/TyploomApp/TLEditState.h"
#include "Typloom/TyploomApp/TLNodeSelection.h"

/// Edits the drawing of the layer that the edited glyph stands on: selects points, moves them, and changes
/// the advance width. Places and distances are in font units, from the glyph's origin. A drag moves by
/// whole units and is one step of the history; what is selected is view state.
class TYPLOOM_API TLNodeEditor {
public:
    explicit TLNodeEditor(std::shared_ptr<TLEditState> state);
    ~TLNodeEditor();
    TLNodeEditor(TLNodeEditor const&) = delete;

    TLNodeSelection const& selection() const { return m_selection; }
    /// The box that is being drawn around points; none otherwise.
    std::optional<NSRect> box() const;

    enum class Grip { none, node, width };
    /// What a press there would take hold of.
    Grip gripAt(NSPoint place, double reach) const;
    /// Takes hold of what is there, otherwise begins a box. Shift adds to the selection and takes away.
    void press(NSPoint place, double reach, bool shift);
    /// With Shift points move only across or only upwards.
    void drag(NSPoint place, bool shift);
    void release();
    /// What a press took hold of; `none` also while a box is drawn.
    Grip held() const { return m_press ? m_press->grip : Grip::none; }
    bool isPressed() const { return m_press.has_value(); }

    /// Gives back what a drag has changed; without one clears the selection. False when neither was there.
    bool cancel();
    /// Moves the selected points. False when none is selected.
    bool nudge(NSPoint delta);
    /// Follows the view and the document: the selection belongs to one layer of one glyph, and lasts
    /// as long as the outline has its points.
    void settle();

private:
    struct Press {
        Grip grip { Grip::none };
        NSPoint place;
        NSPoint pointer; ///< Where it is now.
        std::optional<TLNodeIndex> node {}; ///< Selected before, and alone if the press ends as a click.
        bool hasMoved { false };
        TLNodeSelection selection {}; ///< Before a box.
        std::shared_ptr<TLLayer> layer {};
        TLOutline outline {}; ///< Before the drag.
    };
    void pressNode(TLNodeIndex node, bool shift);
    void show(TLOutline outline);
    void endPress();

    std::shared_ptr<TLEditState> m_state;
    TLNodeSelection m_selection;
    std::weak_ptr<TLLayer> m_selectionLayer;
    std::optional<Press> m_press;
    TLOutline m_shown; ///< What the drag has last made of the outline.
};
