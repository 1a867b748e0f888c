#include "Platform/Qt/SliderAccessibility.h"

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
    QString text(QAccessible::Text kind) const override
    {
        auto const* const slider = sliderOf(object());
        return kind == QAccessible::Value && slider ? sliderPlaceText(*slider)
                                                    : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return read(&NSSlider::doubleValue); }
    QVariant minimumValue() const override { return read(&NSSlider::minValue); }
    QVariant maximumValue() const override { return read(&NSSlider::maxValue); }
    QVariant minimumStepSize() const override { return {}; }
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

QAccessibleInterface* makeInterface(QString const&, QObject* object)
{
    return sliderOf(object) ? new AccessibleSlider(static_cast<QWidget*>(object)) : nullptr;
}
} // namespace

QString sliderPlaceText(NSSlider const& slider)
{
    auto const format = NSLocalizedString("slider.value-and-range.description", NSBundle::mainBundle(),
        "%1$@, between %2$@ and %3$@",
        "Tool tip and spoken value of a slider: its value, the least and the greatest it can have");
    return toQString(format)
        .replace("%1$@", number(slider.doubleValue()))
        .replace("%2$@", number(slider.minValue()))
        .replace("%3$@", number(slider.maxValue()));
}

void installSliderAccessibility()
{
    static bool const installed = (QAccessible::installFactory(makeInterface), true);
    static_cast<void>(installed);
}
