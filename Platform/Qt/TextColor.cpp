#include "Platform/Qt/TextColor.h"

#include "Platform/Qt/DrawingConversions.h"

#include <QEvent>
#include <QWidget>

namespace {

using NamedColor = NSColor (*)();

/// The name that a colour has now; null for one without.
NamedColor nameOf(NSColor color)
{
    for (NamedColor const name : { &NSColor::labelColor, &NSColor::secondaryLabelColor,
             &NSColor::tertiaryLabelColor, &NSColor::controlAccentColor, &NSColor::systemRedColor }) {
        if (name() == color) {
            return name;
        }
    }
    return nullptr;
}

class TextColor final : public QObject {
public:
    explicit TextColor(QWidget& widget)
        : QObject(&widget)
        , m_widget(widget)
    {
        widget.installEventFilter(this);
    }

    void set(QPalette::ColorRole role, NSColor color)
    {
        m_role = role;
        m_name = nameOf(color);
        show(color);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        bool const isAnotherPalette
            = event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange;
        if (isAnotherPalette && m_name) {
            show(m_name());
        }
        return false;
    }

private:
    void show(NSColor color)
    {
        auto palette = m_widget.palette();
        if (palette.color(QPalette::Active, m_role) == toQColor(color)) {
            return;
        }
        for (auto const group : { QPalette::Active, QPalette::Inactive }) {
            palette.setColor(group, m_role, toQColor(color));
        }
        m_widget.setPalette(palette);
    }

    QWidget& m_widget;
    QPalette::ColorRole m_role { QPalette::WindowText };
    NamedColor m_name { nullptr };
};

} // namespace

void setTextColorOf(QWidget& widget, QPalette::ColorRole role, NSColor color)
{
    TextColor* textColor = nullptr;
    for (auto* const child : widget.children()) {
        textColor = textColor ? textColor : dynamic_cast<TextColor*>(child);
    }
    (textColor ? textColor : new TextColor(widget))->set(role, color);
}
