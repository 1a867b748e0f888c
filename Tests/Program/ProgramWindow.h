#pragma once

#include "Tests/Support/WindowEvents.h"
#include "Typloom/TyploomApp/Describe.h"
#include "Typloom/TyploomApp/TLApplicationController.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomApp/TLPluginLoader.h"
#include "Typloom/TyploomApp/TLSidebar.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"
#include "Typloom/TyploomKit/TLLandmarkSlider.h"
#include "Typloom/TyploomKit/TLPlaceholderView.h"

#include "Platform/AppKit/NSButton.h"
#include "Platform/AppKit/NSPopover.h"
#include "Platform/AppKit/NSSearchField.h"
#include "Platform/AppKit/NSTableView.h"
#include "Platform/Foundation/NSLocale.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <gtest/gtest.h>

/// The program's windows in this process, with the built plug-in.
class ProgramWindows {
public:
    ProgramWindows()
    {
        NSSetCurrentLocale("en_US");
        loadPlugin();
    }
    ~ProgramWindows() { NSSetCurrentLocale(""); }

    TLDocumentWindow& open(std::filesystem::path const& path)
    {
        auto const outcome = application.open(path);
        return outcome.window ? *outcome.window : throw std::runtime_error(outcome.error);
    }

    TLApplicationController application;

private:
    static void loadPlugin()
    {
        static TLPluginLoader const loader = [] {
            TLRegisterViewClasses();
            TLPluginLoader fresh;
            fresh.load(BUILD_FOLDER "/PlugIns/Moravel.bundle");
            return fresh;
        }();
        ASSERT_EQ(loader.loaded(), std::vector<std::string> { "Moravel" });
    }
};

/// What one of the program's windows on a family shows, and the events that it is given.
class ProgramWindow {
public:
    explicit ProgramWindow(TLDocumentWindow& shown)
        : document(&shown)
        , window(std::make_unique<WindowEvents>(*shown.widget()))
    {
    }

    static void settle()
    {
        for (int turn = 0; turn < 5; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    void activate() const
    {
        document->widget()->activateWindow();
        (void)QTest::qWaitForWindowActive(document->widget());
        settle();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        window->pressKey(key, modifiers);
        settle();
    }
    void chooseGlyph(std::string const& name) const
    {
        press(Qt::Key_F, Qt::ControlModifier);
        window->type(name);
        press(Qt::Key_Return);
    }

    std::shared_ptr<TLEditViewSidebarControllerProtocol> tab() const
    {
        return document->sidebar()->controllerOfTab(0);
    }
    template <class View> std::shared_ptr<View> part(std::string_view name) const
    {
        return std::dynamic_pointer_cast<View>(tab()->view()->descendantWithIdentifier(name));
    }
    std::shared_ptr<NSTableView> table() const { return part<NSTableView>("tableView"); }
    /// The view of an axis's row; null when it has none now.
    std::shared_ptr<NSView> row(std::string const& axis) const
    {
        for (std::size_t index = 0; index < table()->numberOfRows(); ++index) {
            auto const view = table()->viewAtColumnRow(0, index, false);
            auto const label = view ? in<NSTextField>(view, "nameLabel") : nullptr;
            if (label && label->stringValue() == axis) {
                return view;
            }
        }
        return nullptr;
    }
    template <class View>
    static std::shared_ptr<View> in(std::shared_ptr<NSView> const& row, std::string_view name)
    {
        return std::dynamic_pointer_cast<View>(row->descendantWithIdentifier(name));
    }
    std::shared_ptr<TLLandmarkSlider> slider(std::string const& axis) const
    {
        return in<TLLandmarkSlider>(row(axis), "slider");
    }
    std::string text(std::string const& axis) const
    {
        return in<NSTextField>(row(axis), "valueField")->stringValue();
    }
    /// Which of a row's buttons can be seen: "info", "steps", "info steps" or nothing.
    std::string buttons(std::string const& axis) const
    {
        auto const shows = [&](char const* name) { return !in<NSButton>(row(axis), name)->isHidden(); };
        EXPECT_EQ(shows("stepDownButton"), shows("stepUpButton"));
        std::string const info = shows("infoButton") ? "info" : "";
        return shows("stepUpButton") ? info + (info.empty() ? "steps" : " steps") : info;
    }
    /// Where a value stands on a slider, as a fraction of its width.
    static double fraction(TLLandmarkSlider const& slider, double value)
    {
        constexpr double margin = 9; // Of the track's ends, for the knob and its focus ring.
        auto const width = slider.bounds().size.width;
        auto const span = slider.maxValue() - slider.minValue();
        return (margin + (value - slider.minValue()) / span * (width - 2 * margin)) / width;
    }
    /// The rows under their headings, as JSON; those that are scrolled away too.
    std::string rows() const
    {
        auto const described = QJsonDocument::fromJson(QByteArray::fromStdString(DescribeWindow(*document)));
        return QJsonDocument(described["sections"].toArray()).toJson(QJsonDocument::Compact).toStdString();
    }
    double scrolled() const { return table()->enclosingScrollView()->contentView()->bounds().origin.y; }

    std::shared_ptr<NSView> plusButton() const { return part<NSButton>("addButton"); }
    /// The editor of a glyph axis, or another popover; null when none is open.
    static std::shared_ptr<NSPopover> popover()
    {
        auto const shown = NSPopover::shownPopovers();
        return shown.empty() ? nullptr : shown.back();
    }
    static QWidget& popoverWidget()
    {
        return *qtWidget(*popover()->contentViewController()->view())->window();
    }

    /// The control of the host with that name.
    template <class Widget> Widget& control(QString const& name) const
    {
        for (auto* const widget : document->widget()->findChildren<Widget*>()) {
            if (widget->accessibleName() == name) {
                return *widget;
            }
        }
        throw std::runtime_error("no control named " + name.toStdString());
    }
    std::shared_ptr<TLLayer> layer() const { return document->editViewController()->activeLayer(); }

    TLDocumentWindow* document;
    std::unique_ptr<WindowEvents> window;
};
