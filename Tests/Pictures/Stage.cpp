#include "Tests/Pictures/Stage.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace {

struct PaletteColor {
    QPalette::ColorRole role;
    unsigned light, dark;
};

/// Much as desktops have them.
constexpr PaletteColor paletteColors[] {
    { QPalette::Window, 0xf0f0f0, 0x2b2b2b },
    { QPalette::WindowText, 0x1a1a1a, 0xe6e6e6 },
    { QPalette::Base, 0xffffff, 0x1e1e1e },
    { QPalette::AlternateBase, 0xf6f6f6, 0x262626 },
    { QPalette::Text, 0x1a1a1a, 0xe6e6e6 },
    { QPalette::PlaceholderText, 0x6f6f6f, 0x9c9c9c },
    { QPalette::Button, 0xefefef, 0x3a3a3a },
    { QPalette::ButtonText, 0x1a1a1a, 0xe6e6e6 },
    { QPalette::BrightText, 0xffffff, 0xffffff },
    { QPalette::Light, 0xffffff, 0x5a5a5a },
    { QPalette::Midlight, 0xf8f8f8, 0x4a4a4a },
    { QPalette::Mid, 0xb8b8b8, 0x4a4a4a },
    { QPalette::Dark, 0x9f9f9f, 0x161616 },
    { QPalette::Shadow, 0x6a6a6a, 0x000000 },
    { QPalette::Highlight, 0x2a7fc0, 0x4a90d9 },
    { QPalette::HighlightedText, 0xffffff, 0xffffff },
    { QPalette::ToolTipBase, 0xffffdc, 0x3a3a3a },
    { QPalette::ToolTipText, 0x1a1a1a, 0xe6e6e6 },
};

QPalette paletteFor(Look look)
{
    bool const isDark = look == Look::dark;
    QPalette palette;
    for (auto const& color : paletteColors) {
        palette.setColor(color.role, QColor::fromRgb(isDark ? color.dark : color.light));
    }
    for (auto const role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText }) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(isDark ? 0x808080 : 0x9a9a9a));
    }
    return palette;
}

/// The windows that were opened from that one.
std::vector<QWidget*> windowsOver(QWidget const& window)
{
    std::vector<QWidget*> windows;
    for (auto* const widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->parentWidget() && widget->parentWidget()->window() == &window) {
            windows.push_back(widget);
        }
    }
    return windows;
}

} // namespace

Stage::Stage(Look look, double fontSize)
{
    QApplication::setStyle("Fusion");
    QFont font("DejaVu Sans");
    font.setPointSizeF(fontSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    QApplication::setFont(font);
    setLook(look);
    QApplication::setCursorFlashTime(0);
}

void Stage::setLook(Look look)
{
    QApplication::setPalette(paletteFor(look));
}

Stage::~Stage() = default;

ProgramWindow& Stage::take(TLDocumentWindow& document, QSize size)
{
    m_window = std::make_unique<ProgramWindow>(document);
    m_shown = document.widget();
    m_shown->resize(size);
    m_shown->show();
    m_window->activate();
    m_window->window->moveAway();
    return *m_window;
}

ProgramWindow& Stage::showGlyph(std::string const& glyph, QSize size)
{
    auto& document = open(SOURCE_FOLDER "/Fonts/Skarvane/Skarvane.designspace");
    take(document, size);
    glyph.empty() ? document.setText("") : void(document.editGlyph(glyph));
    ProgramWindow::settle();
    return *m_window;
}

ProgramWindow& Stage::showFont(std::shared_ptr<TLFont> font, std::string const& glyph, QSize size)
{
    m_ownDocument = std::make_unique<TLDocumentWindow>(std::move(font));
    take(*m_ownDocument, size);
    m_ownDocument->showGlyph(glyph);
    ProgramWindow::settle();
    return *m_window;
}

QImage Stage::picture() const
{
    ProgramWindow::settle();
    auto image = m_shown->grab().toImage();
    QPainter painter(&image);
    for (auto* const widget : windowsOver(*m_shown)) {
        auto const place = widget->mapToGlobal(QPoint()) - m_shown->mapToGlobal(QPoint());
        painter.setClipRegion(widget->mask().isEmpty() ? QRegion(widget->rect()).translated(place)
                                                       : widget->mask().translated(place));
        painter.drawPixmap(place, widget->grab());
    }
    return image;
}

QRect Stage::place(QWidget const& widget, int space) const
{
    auto const corner = widget.mapToGlobal(QPoint()) - m_shown->mapToGlobal(QPoint());
    return QRect(corner, widget.size()).adjusted(-space, -space, space, space) & m_shown->rect();
}
