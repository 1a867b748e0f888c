#include "Typloom/TyploomApp/TLMainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QMimeData>

namespace {

std::filesystem::path toPath(QString const& file)
{
    auto const bytes = QFile::encodeName(file); // Names of files are bytes, not text.
    return { bytes.toStdString() };
}

/// The designspace files among what is dragged.
std::vector<std::filesystem::path> familiesIn(QMimeData const& data)
{
    std::vector<std::filesystem::path> files;
    for (auto const& url : data.urls()) {
        if (url.isLocalFile() && url.path().endsWith(".designspace", Qt::CaseInsensitive)) {
            files.push_back(toPath(url.toLocalFile()));
        }
    }
    return files;
}

} // namespace

TLMainWindow::TLMainWindow()
{
    setAcceptDrops(true);
    resize(1360, 800);
    qApp->installEventFilter(this);
}

TLMainWindow::~TLMainWindow()
{
    qApp->removeEventFilter(this);
}

void TLMainWindow::chooseFile()
{
    auto* const dialog = new QFileDialog(this, "Open a family");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({ "Designspace families (*.designspace)", "All files (*)" });
    connect(dialog, &QFileDialog::fileSelected, this, [this](QString const& file) { take(toPath(file)); });
    dialog->open();
}

void TLMainWindow::fillRecent(QMenu& menu) const
{
    if (willShowRecent) {
        willShowRecent(menu);
    }
}

/// Families that are dropped anywhere into the window; a text field there would take their names.
bool TLMainWindow::eventFilter(QObject* watched, QEvent* event)
{
    auto const type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
        return false;
    }
    auto const* const widget = qobject_cast<QWidget*>(watched);
    auto* const drop = static_cast<QDropEvent*>(event);
    if (!widget || widget->window() != this || familiesIn(*drop->mimeData()).empty()) {
        return false;
    }
    drop->acceptProposedAction();
    if (type == QEvent::Drop) {
        for (auto const& file : familiesIn(*drop->mimeData())) {
            take(file);
        }
    }
    return true;
}

void TLMainWindow::closeEvent(QCloseEvent* event)
{
    if (mayClose && !mayClose()) {
        event->ignore();
        return;
    }
    event->accept();
    if (didClose) {
        didClose();
    }
}

void TLMainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && didActivate) {
        didActivate();
    }
}

void TLMainWindow::take(std::filesystem::path const& file) const
{
    if (didChooseFile) {
        didChooseFile(file);
    }
}
