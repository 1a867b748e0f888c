#include "Typloom/TyploomApp/TLRecoveryKeeper.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>

#include <algorithm>

namespace {

/// In milliseconds; what a crash can cost.
constexpr qint64 shortestDelay = 2'000;
/// The writing of a large family's work takes no more than one part in so many of the time.
constexpr qint64 restFactor = 20;

QString copyFor(std::filesystem::path const& family, std::filesystem::path const& folder)
{
    std::error_code error;
    auto const canonical = std::filesystem::weakly_canonical(family, error);
    auto const name = QCryptographicHash::hash(
        QByteArray::fromStdString((error ? family : canonical).string()), QCryptographicHash::Sha1);
    auto const directory = QFile::decodeName(QByteArray::fromStdString(folder.string()));
    return directory + "/" + QString::fromLatin1(name.toHex()) + ".json";
}

} // namespace

TLRecoveryKeeper::TLRecoveryKeeper(
    std::shared_ptr<TLFont> font, QWidget& window, std::filesystem::path const& folder, Complaint complain)
    : m_font(std::move(font))
    , m_window(window)
    , m_file(copyFor(m_font->path(), folder))
    , m_lock(m_file + ".lock")
    , m_complain(std::move(complain))
{
    QDir().mkpath(QFileInfo(m_file).path());
    m_lock.setStaleLockTime(0);
    if (!m_lock.tryLock()) {
        return; // Another program keeps it, or the folder cannot be written to.
    }
    m_timer.setSingleShot(true);
    m_timer.setInterval(static_cast<int>(shortestDelay));
    QObject::connect(&m_timer, &QTimer::timeout, this, [this] { keep(); });
    m_observer = TLNotificationObserver::make(TLUpdateInterface, [this] { schedule(); });
    m_window.installEventFilter(this);
    offer();
}

void TLRecoveryKeeper::discard()
{
    if (m_asks) {
        return;
    }
    m_timer.stop();
    m_written.clear();
    if (m_lock.isLocked()) {
        QFile::remove(m_file);
    }
}

/// Saving tells the window only.
bool TLRecoveryKeeper::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_window && event->type() == QEvent::ModifiedChange) {
        schedule();
        if (!m_window.isWindowModified()) {
            discard();
        }
    }
    return false;
}

void TLRecoveryKeeper::offer()
{
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    if (auto work = fromRecoveryJson(file.readAll())) {
        return askWhetherToRestore(std::move(*work));
    }
    QFile::remove(m_file + ".unreadable");
    file.rename(m_file + ".unreadable");
    m_complain(
        "Unsaved changes were left by a crash, but '" + fromQString(file.fileName()) + "' cannot be read.");
}

void TLRecoveryKeeper::askWhetherToRestore(UnsavedWork work)
{
    m_asks = true;
    auto const date = QLocale().toString(QFileInfo(m_file).lastModified(), QLocale::ShortFormat);
    auto* const box = new QMessageBox(QMessageBox::Question, "Typloom",
        "There are unsaved changes to " + toQString(m_font->familyName()) + " from " + date + ".",
        QMessageBox::NoButton, &m_window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(
        "Typloom ended before they were saved. Restored changes can be undone, and are in "
        "no file before you save them.");
    auto const* const restore = box->addButton("Restore", QMessageBox::AcceptRole);
    box->addButton("Discard", QMessageBox::DestructiveRole);
    QObject::connect(
        box, &QMessageBox::finished, this, [this, box, restore, work = std::move(work)]() mutable {
            m_asks = false;
            if (box->clickedButton() == restore) {
                restoreUnsavedWork(*m_font, std::move(work));
            } else {
                discard();
            }
        });
    box->open();
}

void TLRecoveryKeeper::schedule()
{
    if (!m_asks && !m_timer.isActive()) {
        m_timer.start();
    }
}

void TLRecoveryKeeper::keep()
{
    if (m_asks) {
        return;
    }
    if (!m_font->history().isModified()) {
        return discard();
    }
    QElapsedTimer elapsed;
    elapsed.start();
    auto const text = toRecoveryJson(unsavedWorkOf(*m_font));
    if (text != m_written && write(text)) {
        m_written = text;
    }
    m_timer.setInterval(static_cast<int>(std::max(shortestDelay, restFactor * elapsed.elapsed())));
}

bool TLRecoveryKeeper::write(QByteArray const& text)
{
    QSaveFile file(m_file);
    bool const isWritten = file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) && file.write(text) == text.size()
        && file.commit();
    if (!isWritten && !m_hasComplained) {
        m_hasComplained = true;
        m_complain(
            "Unsaved changes cannot be kept against a crash: " + fromQString(file.errorString()) + ".");
    }
    return isWritten;
}
