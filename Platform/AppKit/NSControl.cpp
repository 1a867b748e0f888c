#include "Platform/AppKit/NSControl.h"

#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/NSViewBacking.h"

#include <QApplication>

NSControl::NSControl(std::unique_ptr<NSViewBacking> backing)
    : NSView(std::move(backing))
{
}

void NSControl::sendAction()
{
    auto const receiver = m_target.lock();
    if (!receiver || m_action.empty()) {
        return;
    }
    auto const self = sharedAs<NSControl>(); // The action may end the control.
    auto const selector = m_action;
    receiver->performSelector(selector, self);
}

bool NSControl::isEnabled() const
{
    // Of the control itself; the views around it may be disabled all the same.
    auto const* widget = qtWidget(*this);
    return widget && widget->isEnabledTo(widget->parentWidget());
}

void NSControl::setEnabled(bool enabled)
{
    if (auto* widget = qtWidget(*this)) {
        widget->setEnabled(enabled);
    }
}

void NSControl::setFont(std::shared_ptr<NSFont> const& font)
{
    m_font = font;
    if (auto* widget = qtWidget(*this)) {
        widget->setFont(font ? toQFont(*font) : QApplication::font(widget));
    }
}

void NSControl::setControlSize(NSControlSize size)
{
    if (auto* widget = qtWidget(*this)) {
        widget->setProperty("controlSize", static_cast<int>(size));
        widget->updateGeometry();
        widget->update();
    }
}
