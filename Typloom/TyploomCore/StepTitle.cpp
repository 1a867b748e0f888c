#include "Typloom/TyploomCore/StepTitle.h"

#include <algorithm>

namespace {

/// The kinds of change that a step can hold, the weightier first: it gives the step its name.
enum class Change {
    axisAdded,
    axisDeleted,
    masterAdded,
    masterDeleted,
    layerAdded,
    layerDeleted,
    axisRenamed,
    axisDefault,
    axis,
    master,
    coordinates,
    advance,
    nodes,
    other
};

char const* titleOf(Change change)
{
    switch (change) {
    case Change::axisAdded:
        return "Add Axis";
    case Change::axisDeleted:
        return "Delete Axis";
    case Change::masterAdded:
        return "Add Master";
    case Change::masterDeleted:
        return "Delete Master";
    case Change::layerAdded:
        return "Add Layer";
    case Change::layerDeleted:
        return "Delete Layer";
    case Change::axisRenamed:
        return "Rename Axis";
    case Change::axisDefault:
        return "Change Axis Default";
    case Change::axis:
        return "Change Axis";
    case Change::master:
        return "Change Master";
    case Change::coordinates:
        return "Change Coordinates";
    case Change::advance:
        return "Change Width";
    case Change::nodes:
        return "Move Nodes";
    case Change::other:
        break;
    }
    return "Change";
}

class Differences {
public:
    void compare(std::vector<TLAxisState> const& before, std::vector<TLAxisState> const& after)
    {
        noteCounts(before.size(), after.size(), Change::axisAdded, Change::axisDeleted);
        for (auto const& axis : after) {
            auto const old = std::find_if(before.begin(), before.end(),
                [&axis](TLAxisState const& candidate) { return candidate.axisId == axis.axisId; });
            if (old != before.end() && *old != axis) {
                compare(*old, axis);
            }
        }
    }

    void compare(TLGlyphState const& before, TLGlyphState const& after)
    {
        compare(before.axes, after.axes);
        noteCounts(before.layers.size(), after.layers.size(), Change::layerAdded, Change::layerDeleted);
        for (auto const& layer : after.layers) {
            auto const* old = before.layer(layer->layerId);
            if (old && old != layer.get() && *old != *layer) {
                compare(*old, *layer);
            }
        }
    }

    void compare(TLFontState const& before, TLFontState const& after)
    {
        compare(before.axes, after.axes);
        noteCounts(before.masters.size(), after.masters.size(), Change::masterAdded, Change::masterDeleted);
        if (before.masters.size() == after.masters.size() && before.masters != after.masters) {
            note(Change::master);
        }
    }

    StepDescription description() const
    {
        // The places in components that name the axis change with it.
        bool const onlyRenames = m_weightiest == Change::axisRenamed && m_renamedAxes.size() == 1;
        return { titleOf(m_weightiest), onlyRenames && !m_changesMore ? m_renamedAxes.front() : "" };
    }

private:
    void noteCounts(std::size_t before, std::size_t after, Change added, Change deleted)
    {
        if (before != after) {
            note(before < after ? added : deleted);
        }
    }

    void compare(TLAxisState const& before, TLAxisState const& after)
    {
        auto renamed = before;
        renamed.name = after.name;
        if (renamed == after) {
            m_renamedAxes.push_back(after.axisId);
            return note(Change::axisRenamed);
        }
        m_changesMore = true;
        note(before.defaultValue != after.defaultValue ? Change::axisDefault : Change::axis);
    }

    void compare(TLLayerState const& before, TLLayerState const& after)
    {
        if (before.coordinates != after.coordinates) {
            note(Change::coordinates);
        } else if (before.outline.contours != after.outline.contours) {
            note(Change::nodes);
        } else if (before.outline.advance != after.outline.advance) {
            note(Change::advance);
        } else {
            note(Change::other);
        }
    }

    void note(Change change)
    {
        m_changesMore = m_changesMore || (change != Change::axisRenamed && change != Change::other);
        m_weightiest = std::min(m_weightiest, change);
    }

    Change m_weightiest { Change::other };
    std::vector<std::string> m_renamedAxes;
    bool m_changesMore { false };
};

} // namespace

StepDescription describeStep(TouchedStates const& before, TouchedStates const& after)
{
    Differences differences;
    if (before.font && after.font) {
        differences.compare(*before.font, *after.font);
    }
    for (auto const& [name, state] : before.glyphs) {
        differences.compare(state, after.glyphs.find(name)->second);
    }
    return differences.description();
}
