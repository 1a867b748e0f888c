#include "Platform/Qt/DrawingConversions.h"

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
    return result;
}
