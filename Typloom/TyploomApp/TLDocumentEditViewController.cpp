#include "Typloom/TyploomApp/TLDocumentEditViewController.h"

#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <array>

TLDocumentEditViewController::TLDocumentEditViewController(
    std::shared_ptr<TLEditState> state, std::weak_ptr<TLWindowController> windowController)
    : m_state(std::move(state))
    , m_windowController(std::move(windowController))
    , m_lineView(std::make_shared<TLLineEditView>(m_state))
{
}

void TLDocumentEditViewController::init()
{
    TLEditViewController::init();
    NSNotificationCenter::defaultCenter().addObserver(
        shared_from_this(), "didUpdateInterface:", TLUpdateInterface);
}

void TLDocumentEditViewController::loadView()
{
    setView(m_lineView);
}

std::span<NSMethod const> TLDocumentEditViewController::methods() const
{
    static std::array const methods {
        NSMethodMake("didUpdateInterface:", &TLDocumentEditViewController::didUpdateInterface),
    };
    return methods;
}

void TLDocumentEditViewController::didUpdateInterface(std::shared_ptr<NSNotification> const&)
{
    m_lineView->documentDidChange();
}

void TLDocumentEditViewController::reflowKeepActiveContentCenteredWithCallback(
    std::function<void(std::shared_ptr<NSObject> const&)> callback)
{
    if (callback) {
        callback(nullptr);
    }
    // The line hangs on the centre of the edited glyph: laid out anew, that centre is where it was.
    m_lineView->setNeedsDisplay(true);
}
