#include "Platform/Qt/DrawingConversions.h"

#include <QFontDatabase>
#include <QFontMetricsF>

/// Whether a font gives every digit the same place, so that a number does not shake while it changes.
static bool hasDigitsOfOneWidth(QFont const& font)
{
    QFontMetricsF const metrics(font);
    auto const width = metrics.horizontalAdvance(QChar('0'));
    for (char digit = '1'; digit <= '9'; ++digit) {
        if (metrics.horizontalAdvance(QChar(digit)) != width) {
            return false;
        }
    }
    return true;
}

QColor toQColor(NSColor color)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
        static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

NSColor fromQColor(QColor const& color)
{
    return { color.redF(), color.greenF(), color.blueF(), color.alphaF() };
}

QFont toQFont(NSFont const& font)
{
    QFont result;
    result.setPointSizeF(font.pointSize());
    switch (font.weight()) {
    case NSFontWeight::regular:
        result.setWeight(QFont::Normal);
        break;
    case NSFontWeight::semibold:
        result.setWeight(QFont::DemiBold);
        break;
    case NSFontWeight::bold:
        result.setWeight(QFont::Bold);
        break;
    }
    if (font.hasMonospacedDigits() && !hasDigitsOfOneWidth(result)) {
        result.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    }
    return result;
}
