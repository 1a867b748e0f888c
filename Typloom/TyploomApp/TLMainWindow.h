#pragma once

#include <QMainWindow>

#include <filesystem>
#include <functional>

/// The top-level widget of a document window. Takes families that are dropped onto it or chosen in a dialog.
class TLMainWindow final : public QMainWindow {
public:
    using PathHandler = std::function<void(std::filesystem::path const&)>;

    TLMainWindow();

    PathHandler didChooseFile;
    /// Asked before the window closes; none: it may.
    std::function<bool()> mayClose;
    std::function<void()> didClose;
    /// The window has got the keyboard.
    std::function<void()> didActivate;

    void chooseFile();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void take(std::filesystem::path const& file) const;
};
