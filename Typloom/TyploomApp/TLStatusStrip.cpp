#include "Typloom/TyploomApp/TLStatusStrip.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLAccessibleRoles.h"
#include "Typloom/TyploomApp/TLElidingLabel.h"

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace {

void addList(QVBoxLayout& layout, QString const& title, std::vector<std::string> const& sentences)
{
    if (sentences.empty()) {
        return;
    }
    auto* const list = new QListWidget;
    list->setAccessibleName(title);
    list->setWordWrap(true);
    list->setAlternatingRowColors(true);
    for (auto const& sentence : sentences) {
        list->addItem(toQString(sentence));
    }
    layout.addWidget(new QLabel(title));
    layout.addWidget(list);
}

void showSentences(
    QWidget* parent, std::vector<std::string> const& problems, std::vector<std::string> const& notes)
{
    auto* const dialog = new QDialog(parent->window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle("Report on the family");
    dialog->resize(640, 360);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* const layout = new QVBoxLayout(dialog);
    addList(*layout, "Problems", problems);
    addList(*layout, "Notes", notes);
    layout->addWidget(buttons);
    dialog->open();
}

QString counted(std::size_t count, QString const& noun)
{
    return count == 0 ? QString() : QString("%1 %2%3").arg(count).arg(noun, count == 1 ? "" : "s");
}

} // namespace

struct TLStatusStrip::Impl {
    QPointer<QWidget> widget { new QWidget };
    TLElidingLabel* label { new TLElidingLabel };
    TLElidingLabel* coordinatesLabel { new TLElidingLabel };
    QPushButton* offerButton { new QPushButton };
    QPointer<QAction> offer;
    QPushButton* reportButton { new QPushButton };
    std::vector<std::string> problems, notes;
};

TLStatusStrip::TLStatusStrip()
    : m_impl(std::make_unique<Impl>())
{
    auto* const label = m_impl->label;
    TLPresentAsNamedLine(*label);
    label->setAccessibleName("Location");
    auto font = label->font();
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    label->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);

    auto* const coordinates = m_impl->coordinatesLabel;
    TLPresentAsNamedLine(*coordinates);
    coordinates->setAccessibleName("Coordinates");
    coordinates->setForegroundRole(QPalette::PlaceholderText);
    coordinates->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    auto* const offer = m_impl->offerButton;
    offer->setFocusPolicy(Qt::TabFocus);
    offer->hide();
    QObject::connect(offer, &QPushButton::clicked, offer, [impl = m_impl.get()] {
        if (impl->offer) {
            impl->offer->trigger();
        }
    });

    auto* const button = m_impl->reportButton;
    button->setFocusPolicy(Qt::TabFocus);
    button->setFlat(true);
    button->setToolTip("What of the family could not be read, and what else there is to know");
    button->hide();
    QObject::connect(button, &QPushButton::clicked, button,
        [impl = m_impl.get()] { showSentences(impl->widget, impl->problems, impl->notes); });

    auto* const layout = new QHBoxLayout(m_impl->widget);
    layout->setContentsMargins(12, 4, 8, 4);
    layout->setSpacing(12);
    layout->addWidget(label);
    layout->addWidget(offer);
    layout->addWidget(coordinates, 1);
    layout->addWidget(button);
    m_impl->widget->setMinimumHeight(32);
}

TLStatusStrip::~TLStatusStrip()
{
    delete m_impl->widget;
}

QWidget* TLStatusStrip::widget() const
{
    return m_impl->widget;
}

void TLStatusStrip::setText(std::string const& text)
{
    m_impl->label->showText(toQString(text));
}

void TLStatusStrip::setCoordinates(std::string const& text)
{
    m_impl->coordinatesLabel->showText(toQString(text));
}

void TLStatusStrip::setOffer(QAction* action)
{
    m_impl->offer = action;
    if (action) {
        m_impl->offerButton->setText(action->text().remove('&'));
        m_impl->offerButton->setToolTip(action->toolTip());
    }
    m_impl->offerButton->setVisible(action != nullptr);
}

void TLStatusStrip::addControl(QWidget* control)
{
    auto* const layout = static_cast<QHBoxLayout*>(m_impl->widget->layout());
    layout->insertWidget(layout->indexOf(m_impl->reportButton), control);
}

std::string TLStatusStrip::text() const
{
    return fromQString(m_impl->label->text());
}

void TLStatusStrip::setReport(std::vector<std::string> problems, std::vector<std::string> notes)
{
    if (problems == m_impl->problems && notes == m_impl->notes) {
        return;
    }
    m_impl->problems = std::move(problems);
    m_impl->notes = std::move(notes);
    auto parts
        = QStringList { counted(m_impl->problems.size(), "problem"), counted(m_impl->notes.size(), "note") };
    parts.removeAll(QString());
    auto* const button = m_impl->reportButton;
    button->setText(parts.join(", ") + "…");
    button->setIcon(button->style()->standardIcon(
        m_impl->problems.empty() ? QStyle::SP_MessageBoxInformation : QStyle::SP_MessageBoxWarning));
    button->setVisible(!parts.isEmpty());
}
