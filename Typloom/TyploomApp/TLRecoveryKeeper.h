#pragma once

#include "Typloom/TyploomApp/TLNotificationObserver.h"
#include "Typloom/TyploomApp/UnsavedWork.h"

#include <QLockFile>
#include <QObject>
#include <QTimer>

class QWidget;

/// Keeps the unsaved work on a family in a folder of the user's, shortly after each change, so that a crash
/// costs a few seconds. Work that a crash has left is offered at the next opening. The copy goes when the
/// work is saved or given up. Of two programs with the same family the first one keeps.
class TLRecoveryKeeper final : public QObject {
public:
    using Complaint = std::function<void(std::string const& sentence)>;

    TLRecoveryKeeper(std::shared_ptr<TLFont> font, QWidget& window, std::filesystem::path const& folder,
        Complaint complain);

    /// The user has saved the work, or does not want it. Nothing happens while the user is asked about it.
    void discard();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void offer();
    void askWhetherToRestore(UnsavedWork work);
    void schedule();
    void keep();
    bool write(QByteArray const& text);

    std::shared_ptr<TLFont> m_font;
    QWidget& m_window;
    QString m_file;
    QLockFile m_lock;
    Complaint m_complain;
    std::shared_ptr<TLNotificationObserver> m_observer;
    QTimer m_timer;
    QByteArray m_written;
    bool m_asks { false };
    bool m_hasComplained { false };
};
