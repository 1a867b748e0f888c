#include "Typloom/TyploomApp/TLInvitationView.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// A dashed frame around the place to which files can be dropped.
class InvitationWidget final : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        auto color = palette().color(QPalette::WindowText);
        color.setAlphaF(0.25);
        QPen pen(color, 2);
        pen.setDashPattern({ 4, 4 });
        painter.setPen(pen);
        painter.drawRoundedRect(QRectF(rect()).adjusted(24, 24, -24, -24), 14, 14);
    }
};

} // namespace

QWidget* TLMakeInvitationView(std::function<void()> open)
{
    auto* const widget = new InvitationWidget;
    auto* const title = new QLabel("No family is open");
    auto font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.8);
    title->setFont(font);
    auto* const button = new QPushButton("Open a designspace family…");
    button->setDefault(true);
    QObject::connect(button, &QPushButton::clicked, button, [open = std::move(open)] { open(); });
    auto* const hint = new QLabel("or drop a .designspace file here");
    hint->setForegroundRole(QPalette::PlaceholderText);

    auto* const layout = new QVBoxLayout(widget);
    layout->setSpacing(14);
    layout->addStretch();
    for (QWidget* const part : std::initializer_list<QWidget*> { title, button, hint }) {
        layout->addWidget(part, 0, Qt::AlignHCenter);
    }
    layout->addStretch();
    return widget;
}
