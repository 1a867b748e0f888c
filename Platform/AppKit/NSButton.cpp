#include "Platform/AppKit/NSButton.h"

#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Platform/Qt/QtButton.h"
#include "Platform/Qt/SymbolIcons.h"

#include <QCoreApplication>

/// Sends the button's action when the user presses it.
struct NSButtonBacking final : NSViewBacking {
    NSButtonBacking()
        : NSViewBacking(new QtButton)
    {
    }
    ~NSButtonBacking() override
    {
        if (widget) {
            QObject::disconnect(button(), &QPushButton::clicked, nullptr, nullptr);
        }
    }
    void attach(NSView& owner) override
    {
        NSViewBacking::attach(owner);
        QObject::connect(button(), &QPushButton::clicked, button(), [this] {
            auto const keep = view->sharedAs<NSButton>();
            static_cast<NSButton&>(*view).sendAction();
        });
    }
    QtButton* button() const { return static_cast<QtButton*>(widget.data()); }
};

static QtButton* qtButton(NSButton const& button)
{
    return static_cast<QtButton*>(qtWidget(button));
}

NSButton::NSButton()
    : NSControl(std::make_unique<NSButtonBacking>())
{
}

NSButton::~NSButton() = default;

std::string NSButton::title() const
{
    auto const* button = qtButton(*this);
    return button ? fromQString(button->text()) : std::string();
}

void NSButton::setTitle(std::string_view title)
{
    NSAssertMainThread();
    if (auto* button = qtButton(*this)) {
        button->setText(toQString(title));
    }
}

void NSButton::setImage(std::shared_ptr<NSImage> image)
{
    NSAssertMainThread();
    auto const describe = [](NSImage const* described) {
        return described ? described->accessibilityDescription().value_or("") : std::string();
    };
    bool const isNamed = accessibilityLabel() != describe(m_image.get());
    m_image = std::move(image);
    auto* button = qtButton(*this);
    if (!button) {
        return;
    }
    button->setIcon(m_image ? symbolIcon(*m_image) : QIcon());
    if (m_image) {
        auto const side = static_cast<int>(symbolSize(m_image->symbolConfiguration().scale));
        button->setIconSize({ side, side });
    }
    if (!isNamed) {
        setAccessibilityLabel(describe(m_image.get()));
    }
}

void NSButton::setBezelStyle(NSBezelStyle style)
{
    NSAssertMainThread();
    m_bezelStyle = style;
    auto* button = qtButton(*this);
    if (!button) {
        return;
    }
    button->setBezel(style);
    if (style == NSBezelStyle::helpButton && button->accessibleName().isEmpty()) {
        button->setAccessibleName(QCoreApplication::translate("QPlatformTheme", "Help"));
    }
}

void NSButton::setHasDestructiveAction(bool destructive)
{
    NSAssertMainThread();
    m_isDestructive = destructive;
    if (auto* button = qtButton(*this)) {
        button->setDestructive(destructive);
    }
}

void NSButton::performClick()
{
    NSAssertMainThread();
    if (auto* button = qtButton(*this)) {
        button->click();
    }
}

NSSize NSButton::fittingSize() const
{
    auto const* button = qtButton(*this);
    return button ? fromQSize(button->sizeHint()) : NSSize {};
}
