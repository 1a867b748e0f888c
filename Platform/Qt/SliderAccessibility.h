#pragma once

#include <QString>

class NSSlider;

/// "540, between 400 and 700", in the user's number format: the slider's accessible value and its tool tip.
QString sliderPlaceText(NSSlider const& slider);

/// Lets screen readers find sliders as such. Once for the program, however often it is called.
void installSliderAccessibility();
