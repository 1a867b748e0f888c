#include "Platform/AppKit/NSFont.h"

#include <QApplication>
#include <QFontInfo>

#include <cmath>

/// The small size in proportion to the default one.
constexpr double smallProportion = 11.0 / 13.0;

double NSFont::systemFontSize()
{
    return QFontInfo(QApplication::font()).pointSizeF();
}

double NSFont::smallSystemFontSize()
{
    return std::round(systemFontSize() * smallProportion * 2) / 2;
}

std::shared_ptr<NSFont> NSFont::systemFont(double size, NSFontWeight weight)
{
    return std::make_shared<NSFont>(size, weight, false);
}

std::shared_ptr<NSFont> NSFont::monospacedDigitSystemFont(double size, NSFontWeight weight)
{
    return std::make_shared<NSFont>(size, weight, true);
}

std::shared_ptr<NSFont> NSFont::legibleDigitsFontOfSize(double size)
{
    return monospacedDigitSystemFont(size, NSFontWeight::regular);
}

NSFont::NSFont(double pointSize, NSFontWeight weight, bool monospacedDigits)
    : m_pointSize(pointSize > 0 ? pointSize : systemFontSize())
    , m_weight(weight)
    , m_monospacedDigits(monospacedDigits)
{
}
