#pragma once

#include "Moravel/EditGlyphAxisViewController.h"
#include "Platform/AppKit/NSApplication.h"
#include "Platform/Foundation/NSLocale.h"
#include "Tests/Support/SidebarFixture.h"

#include <QLineEdit>

/// A sidebar on screen over a glyph with the axis "Bar", whose editor is opened and used by real events.
class AxisEditorFixture : public SidebarFixture {
protected:
    AxisEditorFixture()
    {
        NSSetCurrentLocale("en_US");
        NSSetBeepHandler([this] { ++beeps; });
        bar = addBar();
        appear();
    }
    ~AxisEditorFixture() override
    {
        NSApplication::closeTransientPopovers();
        NSSetBeepHandler({});
        NSSetCurrentLocale("");
    }

    static void settle()
    {
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
    void clickPlus()
    {
        window->click(*sidebar->addButton());
        settle();
    }
    /// By the info button of a row, which is there while the pointer is over the row.
    void clickInfo(std::size_t row)
    {
        window->moveTo(*rowAt(row), 0.3, 0.3);
        window->click(*rowAt(row)->infoButton());
        settle();
    }
    void openBar()
    {
        clickInfo(barRow);
        ASSERT_NE(axisEditor(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&popoverWindow()));
    }
    bool isOpen() const { return popover() && popover()->isShown(); }
    std::shared_ptr<NSPopover> popover() const { return sidebar->editGlyphAxisPopover(); }
    std::shared_ptr<EditGlyphAxisViewController> axisEditor() const
    {
        return popover()
            ? std::dynamic_pointer_cast<EditGlyphAxisViewController>(popover()->contentViewController())
            : nullptr;
    }
    QWidget& popoverWindow() const { return *qtWidget(*axisEditor()->view())->window(); }
    NSTextField& nameField() const { return *axisEditor()->axisNameField(); }
    NSTextField& defaultField() const { return *axisEditor()->defaultValueField(); }
    static QLineEdit& line(NSTextField const& field) { return *qobject_cast<QLineEdit*>(qtWidget(field)); }

    /// Into the popover.
    void key(Qt::Key key)
    {
        QTest::keyClick(popoverWindow().windowHandle(), key);
        settle();
    }
    void type(QString const& text)
    {
        for (auto const character : text) {
            QTest::sendKeyEvent(
                QTest::Click, popoverWindow().windowHandle(), Qt::Key_unknown, QString(character), {});
        }
        settle();
    }
    void clickInPopover(NSView const& view)
    {
        auto const* const widget = qtWidget(view);
        auto const place = widget->mapTo(&popoverWindow(), widget->rect().center());
        QTest::mouseClick(popoverWindow().windowHandle(), Qt::LeftButton, {}, place);
        settle();
    }
    /// Puts the text in the place of the field's whole one; a field that has the keyboard is left first.
    void replaceText(NSTextField const& field, QString const& text)
    {
        auto& typed = line(field);
        typed.setFocus(Qt::TabFocusReason);
        typed.selectAll();
        text.isEmpty() ? key(Qt::Key_Delete) : type(text);
    }
    /// To the default field, or away from it.
    void tab() { key(Qt::Key_Tab); }

    static constexpr std::size_t weightRow = 1;
    static constexpr std::size_t barRow = 3;
    std::shared_ptr<TLAxis> bar;
    int beeps { 0 };
};
