#pragma once

#include "Platform/AppKit/NSSlider.h"
#include "Typloom/TyploomCore/Export.h"

#include <vector>

/// A slider that marks places on its track and lands on them: a press or drag within a few points
/// of a mark gives exactly its value. Marks out of the range are not drawn.
class TYPLOOM_API TLLandmarkSlider final : public NSSlider {
public:
    /// Ascending values to mark; none marks nothing.
    void setLandmarks(std::optional<std::vector<double>> landmarks);
    std::optional<std::vector<double>> const& landmarks() const { return m_landmarks; }

    /// The value from which the filled part of the track starts, and to which Backspace goes back.
    void setNeutralValue(double value);
    double neutralValue() const { return m_neutralValue; }

protected:
    double valueForDrag(double value, NSEvent const& event) const override;
    double nextStop(double value, bool up) const override;
    std::optional<double> resetValue() const override { return m_neutralValue; }
    void drawBar() override;

private:
    std::optional<std::vector<double>> m_landmarks;
    double m_neutralValue { 0 };
};
