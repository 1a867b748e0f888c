#pragma once

#include "Platform/AppKit/NSSlider.h"
#include "Typloom/TyploomCore/Export.h"

#include <vector>

/// A slider that marks places on its track and lands on them: a press or drag within a few points
/// of a mark gives exactly its value. With Shift it passes them by, so that every value can be
/// reached. Marks out of the range are not drawn.
class TYPLOOM_API TLLandmarkSlider final : public NSSlider {
public:
    /// Values to mark, in the slider's own coordinates; none marks nothing. What is not finite is left out.
    void setLandmarks(std::optional<std::vector<double>> landmarks);
    /// Ascending, each value once.
    std::optional<std::vector<double>> const& landmarks() const { return m_landmarks; }

    /// The value from which the filled part of the track starts, and to which Backspace goes back.
    void setNeutralValue(double value);
    double neutralValue() const { return m_neutralValue; }

    NSSize fittingSize() const override;
    Place place() const override;

protected:
    double valueForHand(Hand const& hand) const override;
    double nextStop(double value, bool up) const override;
    std::optional<double> resetValue() const override { return m_neutralValue; }
    void drawBar() override;

private:
    double attractionOf(double landmark, Hand const& hand) const;
    std::vector<double> markPositions() const;

    std::optional<std::vector<double>> m_landmarks;
    double m_neutralValue { 0 };
};
