#pragma once

#include <QMainWindow>

#include <filesystem>
#include <functional>

class QMenu;

/// The top-level widget of a document window. Takes families that are dropped onto it or chosen in a dialog.
class TLMainWindow final : public QMainWindow {
public:
    using PathHandler = std::function<void(std::filesystem::path const&)>;

    TLMainWindow();
    ~TLMainWindow() override;

    PathHandler didChooseFile;
    /// Fills the menu of families that were opened last, which is empty until then.
    std::function<void(QMenu&)> willShowRecent;
    /// Asked before the window closes; none: it may.
    std::function<bool()> mayClose;
    std::function<void()> didClose;
    /// The window has got the keyboard.
    std::function<void()> didActivate;

    void chooseFile();
    void fillRecent(QMenu& menu) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void take(std::filesystem::path const& file) const;
};
