#pragma once

#include "Platform/AppKit/NSColor.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Tests/TyploomApp/EditFamily.h"
#include "Typloom/TyploomApp/TLDocumentEditViewController.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

/// A window on the boxes, with the text B A B A C P X and the first B edited.
struct FamilyWindow : testing::Test {
    EditFamily family;
    TLDocumentWindow window { family.font() };
    std::shared_ptr<TLDocumentEditViewController> controller
        = std::dynamic_pointer_cast<TLDocumentEditViewController>(window.editViewController());
    TLLineEditView& view { *controller->lineView() };

    FamilyWindow()
    {
        window.widget()->resize(1440, 800);
        window.widget()->show();
        window.setText("BABACPX");
        settle();
    }

    static void settle()
    {
        for (int turn = 0; turn < 5; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    template <class Widget> Widget& control(QString const& name) const
    {
        for (auto* const widget : window.widget()->findChildren<Widget*>()) {
            if (widget->accessibleName() == name) {
                return *widget;
            }
        }
        throw std::runtime_error("no control named " + name.toStdString());
    }

    double centreOf(std::size_t index) const
    {
        auto const frame = view.frameOfObject(index).value();
        return frame.origin.x + frame.size.width / 2;
    }

    TLDocumentHistory& history() const { return family.font()->history(); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window.widget()->windowHandle(), key, modifiers);
        settle();
    }

    /// The end of a line is the Return key.
    void typeText(QString const& text) const
    {
        for (auto const character : text) {
            auto* const handle = window.widget()->windowHandle();
            character == '\n' ? QTest::keyClick(handle, Qt::Key_Return)
                              : QTest::keyClick(handle, character.toLatin1());
        }
        settle();
    }

    void click(std::size_t index, Qt::KeyboardModifiers modifiers = {})
    {
        auto const frame = view.frameOfObject(index).value();
        QPoint const place(static_cast<int>(centreOf(index)), static_cast<int>(frame.midY()));
        auto* const handle = window.widget()->windowHandle();
        QTest::mouseClick(handle, Qt::LeftButton, modifiers, qtWidget(view)->mapTo(window.widget(), place));
        settle();
    }

    /// The colour drawn at a point of a glyph object, given in font units.
    QColor colorAt(std::size_t index, double x, double y)
    {
        auto const frame = view.frameOfObject(index).value();
        auto const ascender = family.font()->fontMasters().front()->metrics().ascender;
        auto const image = qtWidget(view)->grab().toImage();
        return image.pixelColor(static_cast<int>(std::lround(frame.origin.x + x * view.scale())),
            static_cast<int>(std::lround(frame.origin.y + (ascender - y) * view.scale())));
    }
    static QColor color(NSColor value)
    {
        return QColor::fromRgbF(
            static_cast<float>(value.red), static_cast<float>(value.green), static_cast<float>(value.blue));
    }
    static int distance(QColor a, QColor b)
    {
        return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
    }
};
