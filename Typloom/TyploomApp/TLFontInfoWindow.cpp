#include "Typloom/TyploomApp/TLFontInfoWindow.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLFontInfoTabs.h"
#include "Typloom/TyploomApp/TLNotificationObserver.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <QAction>
#include <QDialog>
#include <QPointer>
#include <QTabWidget>
#include <QVBoxLayout>

struct TLFontInfoWindow::Impl {
    QPointer<QDialog> dialog;
    TLFontInfoAxesTab* axes;
    TLFontInfoMastersTab* masters;
    std::shared_ptr<TLNotificationObserver> observer;

    void update() const
    {
        if (dialog && dialog->isVisible()) {
            axes->update();
            masters->update();
        }
    }
};

TLFontInfoWindow::TLFontInfoWindow(
    std::shared_ptr<TLEditState> state, QWidget& parent, std::vector<QAction*> const& commands)
    : m_impl(std::make_unique<Impl>())
{
    auto* const dialog = new QDialog(&parent);
    m_impl->dialog = dialog;
    dialog->setWindowTitle("Font Info — " + toQString(state->font()->familyName()));
    dialog->resize(640, 420);
    m_impl->axes = new TLFontInfoAxesTab(state);
    m_impl->masters = new TLFontInfoMastersTab(state);
    auto* const tabs = new QTabWidget;
    tabs->addTab(m_impl->axes, "Font");
    tabs->addTab(m_impl->masters, "Masters");
    auto* const layout = new QVBoxLayout(dialog);
    layout->addWidget(tabs);
    for (auto* const command : commands) {
        dialog->addAction(command);
    }
    auto* const close = new QAction(dialog);
    close->setShortcut(QKeySequence("Ctrl+W"));
    QObject::connect(close, &QAction::triggered, dialog, &QDialog::close);
    dialog->addAction(close);
    m_impl->observer
        = TLNotificationObserver::make(TLUpdateInterface, [impl = m_impl.get()] { impl->update(); });
}

TLFontInfoWindow::~TLFontInfoWindow()
{
    delete m_impl->dialog;
}

QWidget* TLFontInfoWindow::widget() const
{
    return m_impl->dialog;
}

void TLFontInfoWindow::open()
{
    m_impl->dialog->show();
    m_impl->dialog->raise();
    m_impl->dialog->activateWindow();
    m_impl->update();
}

void TLFontInfoWindow::endEditing()
{
    m_impl->axes->endEditing();
    m_impl->masters->endEditing();
}

void TLFontInfoWindow::setNoteHandler(std::function<void(std::vector<std::string> const&)> handler)
{
    m_impl->masters->didNote = std::move(handler);
}
