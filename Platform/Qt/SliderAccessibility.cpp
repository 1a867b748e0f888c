#include "Platform/Qt/SliderAccessibility.h"

#include "Platform/AppKit/KeyStep.h"
#include "Platform/AppKit/NSSlider.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSNumberFormatter.h"
#include "Platform/Qt/NSViewBacking.h"

#include <QAccessibleWidget>

namespace {
QString number(double value)
{
    NSNumberFormatter formatter;
    formatter.setMaximumFractionDigits(3);
    return toQString(formatter.stringFromNumber(value).value_or(NSNumberDescription(value)));
}

NSSlider* sliderOf(QObject* object)
{
    auto* const widget = qobject_cast<QWidget*>(object);
    return widget ? dynamic_cast<NSSlider*>(viewOfWidget(widget)) : nullptr;
}

/// A slider as a screen reader finds it.
class AccessibleSlider final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleSlider(QWidget* widget)
        : QAccessibleWidget(widget, QAccessible::Slider)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    /// Some bridges know only the number of a value; what they do tell is the description.
    QString text(QAccessible::Text kind) const override
    {
        auto const* const slider = sliderOf(object());
        bool const tellsPlace = kind == QAccessible::Value || kind == QAccessible::Description;
        return tellsPlace && slider ? sliderSpokenText(*slider) : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return read(&NSSlider::doubleValue); }
    QVariant minimumValue() const override { return read(&NSSlider::minValue); }
    QVariant maximumValue() const override { return read(&NSSlider::maxValue); }
    QVariant minimumStepSize() const override
    {
        auto const* const slider = sliderOf(object());
        return slider ? QVariant(keyStep(slider->maxValue() - slider->minValue(), false)) : QVariant();
    }
    void setCurrentValue(QVariant const& value) override
    {
        auto* const slider = sliderOf(object());
        if (slider && slider->isEnabled()) {
            slider->performChange(value.toDouble());
        }
    }

private:
    QVariant read(double (NSSlider::*value)() const) const
    {
        auto const* const slider = sliderOf(object());
        return slider ? QVariant((slider->*value)()) : QVariant();
    }
};

} // namespace

static QString betweenText(double value, double lower, double upper)
{
    auto const format = NSLocalizedString("slider.value-and-range.description", NSBundle::mainBundle(),
        "%1$@, between %2$@ and %3$@",
        "Tool tip and spoken value of a slider: its value, and between which values that lies");
    return toQString(format)
        .replace("%1$@", number(value))
        .replace("%2$@", number(lower))
        .replace("%3$@", number(upper));
}

QString sliderRangeText(NSSlider const& slider)
{
    return betweenText(slider.doubleValue(), slider.minValue(), slider.maxValue());
}

QString sliderSpokenText(NSSlider const& slider)
{
    auto const place = slider.place();
    if (place.stop == 0) {
        return betweenText(slider.doubleValue(), place.lower, place.upper);
    }
    auto const format = NSLocalizedString("slider.value-on-stop.description", NSBundle::mainBundle(),
        "%1$@, position %2$@ of %3$@",
        "Spoken value of a slider that stands on one of its marks: its value, which mark that is, counted "
        "from "
        "the least, and how many there are");
    return toQString(format)
        .replace("%1$@", number(slider.doubleValue()))
        .replace("%2$@", number(static_cast<double>(place.stop)))
        .replace("%3$@", number(static_cast<double>(place.stops)));
}

QAccessibleInterface* makeAccessibleSlider(QWidget& widget)
{
    return sliderOf(&widget) ? new AccessibleSlider(&widget) : nullptr;
}
