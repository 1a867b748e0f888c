#pragma once

#include "Platform/AppKit/NSButton.h"

#include <QPushButton>

/// A button with a bezel of the desktop's style, with none until the pointer is over it, or the round
/// one that stands for help. Takes the keyboard by Tab only. Without a text and a name of its own it is
/// called as its tool tip says.
class QtButton final : public QPushButton {
    Q_OBJECT
    /// An `NSControlSize`.
    Q_PROPERTY(int controlSize READ controlSize WRITE setControlSize)
public:
    QtButton();
    void setBezel(NSBezelStyle bezel);
    void setDestructive(bool destructive);
    int controlSize() const { return static_cast<int>(m_controlSize); }
    void setControlSize(int size);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool hitButton(QPoint const& place) const override;

private:
    int sideLength() const;
    void paintRounded(QPainter& painter);
    void paintHelp(QPainter& painter);
    void paintBorderless(QPainter& painter);
    void paintContent(QPainter& painter);

    NSBezelStyle m_bezel { NSBezelStyle::rounded };
    NSControlSize m_controlSize { NSControlSize::regular };
    bool m_isDestructive { false };
    QString m_nameFromToolTip;
};
