#pragma once

#include "Typloom/TyploomCore/TLFont.h"

#include <algorithm>
#include <sstream>

/// What a document holds, for comparison: two documents of one family have the same text when they hold the
/// same. Identifiers and names of layers, of masters and of the font's axes are not in it, since files keep
/// none.
inline std::string textOf(TLOutline const& outline)
{
    std::ostringstream text;
    text.precision(9);
    text << outline.advance << "x" << outline.height;
    for (auto const& contour : outline.contours) {
        text << " [";
        for (auto const& point : contour.points) {
            text << point.x << "," << point.y << "/" << static_cast<int>(point.type) << point.smooth << " ";
        }
        text << "]";
    }
    for (auto const& component : outline.components) {
        text << " <" << component.base;
        for (double const number : component.transform) {
            text << " " << (std::abs(number) < 1e-9 ? 0 : number);
        }
        for (auto const& [axis, value] : component.location) {
            text << " " << axis << "=" << value;
        }
        text << ">";
    }
    for (auto const& anchor : outline.anchors) {
        text << " " << anchor.name << "@" << anchor.x << "," << anchor.y;
    }
    return text.str();
}

inline std::string textOf(TLGlyph const& glyph)
{
    std::ostringstream text;
    text << glyph.name() << "\n";
    for (auto const& axis : glyph.axes()) {
        text << "  axis " << axis->axisId() << " " << axis->name() << " " << axis->defaultValue() << "\n";
    }
    std::vector<std::string> lines;
    for (auto const& [layerId, layer] : glyph.layers()) {
        std::ostringstream line;
        line << "  layer " << static_cast<int>(layer->data()->kind);
        for (auto const& axis : glyph.allAxes()) {
            auto const value = layer->axisInternalValueValue(axis->axisId());
            bool const isOwn = axis->axisTag() == std::nullopt && layer->isBraceLayer();
            line << " " << axis->name() << "=" << value.value_or(isOwn ? axis->defaultValue() : 0);
            for (auto const& partId : axis->partIds()) {
                auto const part = layer->coordinates().find(partId);
                line << "/" << (part == layer->coordinates().end() ? 0 : part->second);
            }
        }
        lines.push_back(line.str() + " " + textOf(layer->outline()) + "\n");
    }
    std::sort(lines.begin(), lines.end());
    for (auto const& line : lines) {
        text << line;
    }
    return text.str();
}

/// Of the axes, masters and the named glyphs; of all glyphs where none is named.
inline std::string textOf(TLFont const& font, std::vector<std::string> names = {})
{
    std::ostringstream text;
    for (auto const& axis : font.axes()) {
        text << "axis " << axis->name() << " " << axis->minimum() << " " << axis->defaultValue() << " "
             << axis->maximum() << "\n";
    }
    for (auto const& master : font.fontMasters()) {
        text << "master " << master->name();
        for (auto const& axis : font.axes()) {
            text << " " << master->axisInternalValueValueForId(axis->axisId());
        }
        text << "\n";
    }
    for (auto const& name : names.empty() ? font.glyphNames() : names) {
        auto const glyph = font.glyphForName(name);
        text << (glyph ? textOf(*glyph) : name + " is missing\n");
    }
    return text.str();
}
