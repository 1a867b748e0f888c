#pragma once

#include "Platform/Foundation/NSObject.h"
#include "Typloom/TyploomCore/Export.h"

class TLFont;

/// The controller of one document window.
class TYPLOOM_API TLWindowController : public NSObject {
public:
    virtual std::shared_ptr<TLFont> documentFont() const = 0;
    /// Makes the master at that index current and shows its layer, which ends a preview. An index beyond
    /// the masters is ignored.
    virtual void setMasterIndex(std::size_t index) = 0;
};
