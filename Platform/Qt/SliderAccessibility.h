#pragma once

#include <QString>

class NSSlider;
class QAccessibleInterface;
class QWidget;

/// "540, between 100 and 900", the ends of its range, in the user's number format: the slider's tool tip.
QString sliderRangeText(NSSlider const& slider);
/// "540, between 400 and 700", the stops beside it, or "400, position 2 of 5" on a stop: what is said of
/// its value. Stops have no names here: what stands at a value depends on the other axes too.
QString sliderSpokenText(NSSlider const& slider);

/// The slider as a screen reader finds it; null where the widget is no slider's.
QAccessibleInterface* makeAccessibleSlider(QWidget& widget);
