#pragma once

#include "Platform/AppKit/NSImage.h"
#include "Platform/AppKit/NSView.h"
#include "Typloom/TyploomKit/TLGlyphViewControllerProtocol.h"

/// A tab of the edit view's left sidebar. Implemented by subclasses of `NSViewController`, whose
/// `viewDidAppear` the host sends whenever the tab comes to be shown.
class TLEditViewSidebarControllerProtocol {
public:
    virtual ~TLEditViewSidebarControllerProtocol() = default;
    /// The tab's content; answered with `NSViewController::view`.
    virtual std::shared_ptr<NSView> view() = 0;
    /// The edit view's controller; held weakly. Set by the host before the view is shown.
    virtual void setController(std::weak_ptr<TLGlyphViewControllerProtocol> controller) = 0;
};

/// The class of such a tab, as a value: what the host needs to know before it makes an instance.
struct TLEditViewSidebarControllerClass {
    std::string name;
    std::function<std::shared_ptr<TLEditViewSidebarControllerProtocol>()>
        make; ///< With the plain initialiser.
    std::function<std::string()> title;
    std::function<std::shared_ptr<NSImage>()> tabBarImage;
};
