#pragma once

#include "Moravel/AxisCellView.h"
#include "Moravel/SidebarViewController.h"
#include "Tests/Support/EditViewDouble.h"
#include "Tests/Support/FontBuilder.h"
#include "Tests/Support/RowBuilder.h"
#include "Tests/Support/ViewWindow.h"

#include <gtest/gtest.h>

/// A sidebar over an edit view's double, on a font with one axis, a glyph with one of its own and two layers.
class SidebarFixture : public testing::Test {
protected:
    SidebarFixture()
    {
        RowBuilder::openBundle();
        weight = builder.addAxis("wght", "Weight", { 100, 400, 900 }, "wght");
        builder.addMaster("regular", { { "wght", 400 } });
        builder.addMaster("black", { { "wght", 900 } });
        glyph = builder.addGlyph("A");
        editor = std::make_shared<EditViewControllerDouble>(builder.font());
        editor->layer = glyph->layerForId("regular");
        sidebar = std::make_shared<SidebarViewController>();
        sidebar->init();
        sidebar->setController(editor);
    }
    /// Shows the tab in a window.
    void appear(QSize size = { 280, 640 })
    {
        window.reset();
        window = std::make_unique<ViewWindow>(sidebar->view(), size);
        sidebar->viewDidAppear();
        QCoreApplication::processEvents();
    }
    void refresh() { sidebar->applyTableModel(sidebar->makeTableModel(), nullptr, {}); }
    std::shared_ptr<TLAxis> addBar()
    {
        FontBuilder::addBraceLayer(glyph, "raised", "regular", { { "bar", 100 } });
        return FontBuilder::addGlyphAxis(glyph, "bar", "Bar", { 0, 0, 100 });
    }
    std::shared_ptr<NSView> viewAt(std::size_t row) const
    {
        return sidebar->tableView()->viewAtColumnRow(0, row, true);
    }
    std::shared_ptr<AxisCellView> rowAt(std::size_t row) const
    {
        return std::dynamic_pointer_cast<AxisCellView>(viewAt(row));
    }
    void filterBy(std::string const& text)
    {
        sidebar->filterField()->setStringValue(text);
        sidebar->controlTextDidChange(
            std::make_shared<NSNotification>("NSControlTextDidChangeNotification", sidebar->filterField()));
    }
    double scrollPosition() const
    {
        return sidebar->tableView()->enclosingScrollView()->contentView()->bounds().origin.y;
    }
    /// Gives the table more rows than it can show, and scrolls away from the top.
    void scrollDownManyRows()
    {
        for (auto index = 0; index < 40; ++index) {
            builder.addAxis("a" + std::to_string(index), "Axis " + std::to_string(index));
        }
        refresh();
        sidebar->tableView()->scrollRowToVisible(40);
        ASSERT_GT(scrollPosition(), 100);
    }

    FontBuilder builder;
    std::shared_ptr<TLAxis> weight;
    std::shared_ptr<TLGlyph> glyph;
    std::shared_ptr<EditViewControllerDouble> editor;
    std::shared_ptr<SidebarViewController> sidebar;
    std::unique_ptr<ViewWindow> window;
};
