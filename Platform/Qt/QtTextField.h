#pragma once

#include <QLineEdit>

#include <functional>
#include <string_view>

/// A line that can be edited. Tells its owner what the user does in it.
class QtTextField final : public QLineEdit {
    Q_OBJECT
public:
    struct Hooks {
        /// A command key, by its selector ("insertNewline:"). True when it has been dealt with.
        std::function<bool(std::string_view selector)> command;
        /// The user went elsewhere.
        std::function<void()> left;
        /// The field was hidden or disabled while it had the keyboard.
        std::function<void()> takenAway;
    };
    Hooks hooks;

    /// A field of numbers asks for room for one of five digits, in its font.
    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    bool showsWholeText() const;
    bool sendCommand(std::string_view selector);
    void takeAway();

    bool m_hasKeyboard { false }; ///< Also while its window is not the active one.
    bool m_selectsAllOnRelease { false };
};
