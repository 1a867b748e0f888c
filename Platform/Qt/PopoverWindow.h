#pragma once

#include "Platform/AppKit/NSView.h"
#include "Platform/Qt/PopoverPlacement.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

/// The window of a popover: shows a view beside its anchor and notices when it should close.
/// A tool window, not a popup: those swallow the press that closes them.
class PopoverWindow final : public QWidget {
public:
    struct Anchor {
        QPointer<QWidget> widget;
        QRect rect; ///< In the widget.
        NSRectEdge edge { NSRectEdge::maxY };
    };
    /// `close` may be called at any time until `finish`.
    PopoverWindow(std::shared_ptr<NSView> content, bool transient, std::function<void()> close);
    ~PopoverWindow() override;

    void open(Anchor anchor);
    /// Gives the content back, gives the keyboard back to the anchor's window, and goes away.
    void finish();
    bool isTransient() const { return m_isTransient; }

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    std::shared_ptr<NSView> m_content;
    bool m_isTransient;
    std::function<void()> m_close;
    Anchor m_anchor;
    QPointer<QWidget> m_anchorSuperview; ///< Where it was when the popover was opened.
    QPointer<QWidget> m_anchorWindow;
    QRect m_anchorInWindow; ///< As last seen.
    PopoverPlacement m_placement;
    std::shared_ptr<void> m_pressObserver;
    bool m_isDying { false };

    void requestClose();
    void closeLaterIf(std::function<bool()> condition);
    void watchAnchor();
    void letAnchorGo();
    bool isAnchorHidden() const;
    QRect anchorOnScreen();
    void place();
    void bringUp();
    bool isInside(QWidget const* widget) const;
    void releaseContent();
};
