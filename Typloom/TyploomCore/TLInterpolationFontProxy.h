#pragma once

#include "Platform/Foundation/NSObject.h"
#include "Typloom/TyploomCore/Export.h"

class TLFont;

/// The font that an interpolated preview belongs to; it stands in front of the real one.
class TYPLOOM_API TLInterpolationFontProxy final : public NSObject {
public:
    explicit TLInterpolationFontProxy(std::shared_ptr<TLFont> parentFont)
        : m_parentFont(std::move(parentFont))
    {
    }
    std::shared_ptr<TLFont> parentFont() const { return m_parentFont; }

private:
    std::shared_ptr<TLFont> m_parentFont;
};
