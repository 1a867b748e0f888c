#pragma once

#include <QAbstractScrollArea>
#include <QPointer>

#include <functional>
#include <memory>

/// A part of the screen through which rows are seen, with a scroller. It knows where it stands and
/// which row the user has hold of; the rows are its owner's.
class QtTableView final : public QAbstractScrollArea {
    Q_OBJECT
public:
    struct Hooks {
        /// What can be seen has changed, by scrolling or by another size.
        std::function<void()> visibleRectChanged;
        /// Tab has brought the keyboard to a control of a row.
        std::function<void(QWidget* control)> tabbedTo;
        /// A row may have lost what kept it: the keyboard, or a pressed mouse button.
        std::function<void()> holdEnded;
    };
    QtTableView();

    Hooks hooks;

    /// The control below that has the keyboard, or would have it in an active window; null for none.
    QWidget* controlWithKeyboard() const;
    /// The control below on which a mouse button went down and is still held; null for none.
    QWidget* pressedControl() const { return m_pressed; }
    void notePress(QWidget* target);

    /// Takes a row's widget out of the list. Its control with the keyboard gives it to nobody.
    template <class TakeOut> void takeOut(TakeOut const& operation)
    {
        m_takesOut = true;
        operation();
        m_takesOut = false;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QPointer<QWidget> m_pressed;
    std::shared_ptr<void> m_pressObserver;
    bool m_takesOut { false };
};
