#include "Typloom/TyploomKit/TLLandmarkSlider.h"

#include "Platform/AppKit/CGContext.h"

#include <algorithm>
#include <cmath>

namespace {
/// A landmark takes the hand from this far, in points.
constexpr double reach = 4;
/// Marks stand below the track, where the knob does not cover them.
constexpr double markTop = 5;
constexpr double markHeight = 6;
constexpr double markWidth = 2;
/// Marks nearer than this get thinner, so that a gap stays between them.
constexpr double crowdedDistance = 4;
/// Stepping passes over landmarks this near to the value, as the step buttons do.
constexpr double sameValue = 0.001;
} // namespace

void TLLandmarkSlider::setLandmarks(std::optional<std::vector<double>> landmarks)
{
    if (landmarks) {
        std::erase_if(*landmarks, [](double value) { return !std::isfinite(value); });
        std::ranges::sort(*landmarks);
        auto const repeated = std::ranges::unique(*landmarks);
        landmarks->erase(repeated.begin(), repeated.end());
    }
    m_landmarks = std::move(landmarks);
    setNeedsDisplay(true);
}

void TLLandmarkSlider::setNeutralValue(double value)
{
    if (std::isfinite(value)) {
        m_neutralValue = value + 0.0;
        setNeedsDisplay(true);
    }
}

NSSize TLLandmarkSlider::fittingSize() const
{
    auto const plain = NSSlider::fittingSize();
    return { plain.width, std::max(plain.height, 2 * (markTop + markHeight) + 2) };
}

/// How near the hand must come to a landmark, in points. A drag that begins beside a landmark is
/// not pulled back onto it: only a hand that comes nearer than it was lands there.
double TLLandmarkSlider::attractionOf(double landmark, Hand const& hand) const
{
    if (!hand.pressedKnob || hand.valueAtPress == landmark) {
        return reach;
    }
    bool const onSameSide = (hand.value < landmark) == (hand.valueAtPress < landmark);
    auto const distanceAtPress = std::abs(positionForValue(hand.valueAtPress) - positionForValue(landmark));
    return onSameSide ? std::min(reach, distanceAtPress - 0.5) : reach;
}

double TLLandmarkSlider::valueForHand(Hand const& hand) const
{
    if (hand.isFine || !m_landmarks) {
        return hand.value;
    }
    auto const x = positionForValue(hand.value);
    auto best = hand.value;
    auto bestDistance = reach;
    for (auto const landmark : *m_landmarks) {
        if (landmark < minValue() || landmark > maxValue()) {
            continue;
        }
        auto const distance = std::abs(positionForValue(landmark) - x);
        if (distance <= bestDistance && distance <= attractionOf(landmark, hand)) {
            best = landmark;
            bestDistance = distance;
        }
    }
    return best;
}

double TLLandmarkSlider::nextStop(double value, bool up) const
{
    auto const end = NSSlider::nextStop(value, up);
    if (!m_landmarks) {
        return end;
    }
    if (up) {
        auto const next
            = std::ranges::find_if(*m_landmarks, [&](double each) { return each > value + sameValue; });
        return next == m_landmarks->end() ? end : std::min(*next, end);
    }
    auto const previous = std::find_if(
        m_landmarks->rbegin(), m_landmarks->rend(), [&](double each) { return each < value - sameValue; });
    return previous == m_landmarks->rend() ? end : std::max(*previous, end);
}

NSSlider::Place TLLandmarkSlider::place() const
{
    auto place = NSSlider::place();
    for (auto const landmark : m_landmarks.value_or(std::vector<double> {})) {
        if (landmark < minValue() || landmark > maxValue()) {
            continue;
        }
        ++place.stops;
        if (std::abs(landmark - doubleValue()) <= sameValue) {
            place.stop = place.stops;
        } else if (landmark < doubleValue()) {
            place.lower = landmark;
        } else {
            place.upper = std::min(place.upper, landmark);
        }
    }
    return place;
}

/// Left edges of the marks, in whole points, so that each is crisp; marks of one place are one.
std::vector<double> TLLandmarkSlider::markPositions() const
{
    std::vector<double> positions;
    for (auto const landmark : *m_landmarks) {
        if (landmark >= minValue() && landmark <= maxValue()) {
            positions.push_back(std::round(positionForValue(landmark)) - markWidth / 2);
        }
    }
    auto const repeated = std::ranges::unique(positions);
    positions.erase(repeated.begin(), repeated.end());
    return positions;
}

void TLLandmarkSlider::drawBar()
{
    drawTrack(m_neutralValue);
    if (!m_landmarks) {
        return;
    }
    auto const positions = markPositions();
    CGPath marks;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        bool const crowded = (i > 0 && positions[i] - positions[i - 1] < crowdedDistance)
            || (i + 1 < positions.size() && positions[i + 1] - positions[i] < crowdedDistance);
        marks.addRect({ { positions[i], trackY() + markTop }, { crowded ? 1 : markWidth, markHeight } });
    }
    auto& context = *CGContext::current();
    context.setFillColor(isEnabled() ? NSColor::secondaryLabelColor() : NSColor::tertiaryLabelColor());
    context.addPath(marks);
    context.fillPath();
}
