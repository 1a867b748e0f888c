#include "Platform/AppKit/CGContext.h"
#include "Platform/AppKit/NSSlider.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double trackHeight = 4;

CGPath capsule(NSRect rect)
{
    auto const radius = std::min(rect.size.width, rect.size.height) / 2;
    auto const bend = radius * 0.5523; // A quarter circle as one cubic curve.
    auto const left = rect.origin.x, right = rect.maxX(), top = rect.origin.y, bottom = rect.maxY();
    CGPath path;
    path.moveTo({ left + radius, top });
    path.lineTo({ right - radius, top });
    path.curveTo({ right - radius + bend, top }, { right, top + radius - bend }, { right, top + radius });
    path.lineTo({ right, bottom - radius });
    path.curveTo(
        { right, bottom - radius + bend }, { right - radius + bend, bottom }, { right - radius, bottom });
    path.lineTo({ left + radius, bottom });
    path.curveTo(
        { left + radius - bend, bottom }, { left, bottom - radius + bend }, { left, bottom - radius });
    path.lineTo({ left, top + radius });
    path.curveTo({ left, top + radius - bend }, { left + radius - bend, top }, { left + radius, top });
    path.closeSubpath();
    return path;
}

void fill(CGContext& context, CGPath const& path, NSColor color)
{
    context.setFillColor(color);
    context.addPath(path);
    context.fillPath();
}

CGPath disc(NSPoint centre, double radius)
{
    CGPath path;
    path.addEllipse({ { centre.x - radius, centre.y - radius }, { 2 * radius, 2 * radius } });
    return path;
}
} // namespace

void NSSlider::drawRect(NSRect dirty)
{
    NSControl::drawRect(dirty);
    if (!CGContext::current()) {
        return;
    }
    drawBar();
    drawKnob();
}

void NSSlider::drawBar()
{
    drawTrack(m_minValue);
}

void NSSlider::drawTrack(double filledFromValue)
{
    auto& context = *CGContext::current();
    auto const top = trackY() - trackHeight / 2;
    auto const left = knobRadius + focusRingWidth - trackHeight / 2;
    auto const length = bounds().size.width - 2 * left;
    if (length <= trackHeight) {
        return;
    }
    auto const strength = isEnabled() ? 0.28 : 0.14;
    fill(context, capsule({ { left, top }, { length, trackHeight } }),
        NSColor::labelColor().withAlpha(strength));
    if (!isEnabled()) {
        return;
    }
    auto const from = positionForValue(filledFromValue);
    auto const to = positionForValue(doubleValue());
    CGPath filled;
    filled.addRect({ { std::min(from, to), top }, { std::abs(to - from), trackHeight } });
    fill(context, filled, NSColor::controlAccentColor());
}

void NSSlider::drawKnob()
{
    auto& context = *CGContext::current();
    NSPoint const centre { positionForValue(doubleValue()), trackY() };
    if (isFirstResponder()) {
        fill(context, disc(centre, knobRadius + focusRingWidth), NSColor::controlAccentColor());
    }
    // A ring in the background's colour sets the knob off from the track and the marks.
    fill(context, disc(centre, knobRadius), NSColor::controlBackgroundColor());
    auto const color = isEnabled() ? NSColor::controlAccentColor() : NSColor::tertiaryLabelColor();
    fill(context, disc(centre, knobRadius - 1), color);
    fill(context, disc(centre, isTracking() ? 2 : 3), NSColor::textBackgroundColor());
}
