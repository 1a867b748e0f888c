#pragma once

#include "Platform/AppKit/NSView.h"

#include <QWidget>

/// The widget of a view that draws itself and handles its events: forwards both to the view.
/// An event that no view acts on goes on to the toolkit's parent widgets.
class PLATFORM_API QtView : public QWidget {
    Q_OBJECT

public:
    explicit QtView(QWidget* parent = nullptr);
    ~QtView() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    using Handler = void (NSView::*)(NSEvent const&);
    void deliver(QEvent& event, NSEvent const& converted, Handler handler);
    void geometryChanged();
    void focusChanged();
};
