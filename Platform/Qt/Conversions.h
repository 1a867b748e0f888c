#pragma once

#include "Platform/Foundation/Export.h"

#include <QString>

#include <string>
#include <string_view>

/// Text between the platform's UTF-8 and the toolkit's strings. Bytes that are no UTF-8 become
/// U+FFFD on the way in.
PLATFORM_API QString toQString(std::string_view text);
PLATFORM_API std::string fromQString(QString const& text);
