#include "Typloom/TyploomApp/Snapshot.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QSaveFile>
#include <QThread>
#include <QWidget>

namespace {
constexpr int quietMilliseconds = 40;
constexpr int longestMilliseconds = 5000;
} // namespace

void SettleEvents()
{
    QElapsedTimer total, quiet;
    total.start();
    quiet.start();
    auto* const dispatcher = QAbstractEventDispatcher::instance();
    while (quiet.elapsed() < quietMilliseconds && total.elapsed() < longestMilliseconds) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (dispatcher->processEvents(QEventLoop::AllEvents)) {
            quiet.restart();
        } else {
            QThread::msleep(1);
        }
    }
}

std::optional<std::string> WriteSnapshot(QWidget& window, std::filesystem::path const& file)
{
    QSaveFile output(QString::fromStdString(file.string()));
    output.setDirectWriteFallback(true); // For folders that take no new file.
    bool const isWritten
        = output.open(QIODevice::WriteOnly) && window.grab().save(&output, "PNG") && output.commit();
    if (isWritten) {
        return std::nullopt;
    }
    return "The picture '" + file.string() + "' cannot be written: " + output.errorString().toStdString();
}
