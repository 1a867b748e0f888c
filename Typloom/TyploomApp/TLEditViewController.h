#pragma once

#include "Platform/AppKit/NSViewController.h"
#include "Typloom/TyploomApp/TLGlyphEditView.h"
#include "Typloom/TyploomApp/TLWindowController.h"
#include "Typloom/TyploomKit/TLGlyphViewControllerProtocol.h"

/// The controller of an edit view: what plug-ins may ask of it.
class TYPLOOM_API TLEditViewController : public NSViewController, public TLGlyphViewControllerProtocol {
public:
    virtual std::shared_ptr<TLGlyphEditView> graphicView() const = 0;
    virtual std::shared_ptr<TLWindowController> windowController() const = 0;
    /// Lays the text out anew and keeps the centre of the edited glyph where it is on screen. The callback
    /// runs once, before this returns; its argument says nothing.
    virtual void reflowKeepActiveContentCenteredWithCallback(
        std::function<void(std::shared_ptr<NSObject> const&)> callback)
        = 0;
};
