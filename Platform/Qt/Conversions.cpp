#include "Platform/Qt/Conversions.h"

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string fromQString(QString const& text)
{
    return text.toStdString();
}
