#pragma once

#include "Platform/AppKit/NSSlider.h"
#include "Platform/AppKit/NSTableCellView.h"
#include "Platform/AppKit/NSTableView.h"
#include "Platform/AppKit/NSTextField.h"
#include "Tests/AppKit/ViewWindow.h"

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <numeric>

/// A cell of a name, a slider and a field, 50 points high; counts what the table does with it.
class TestCell final : public NSTableCellView {
public:
    TestCell() { ++made; }
    void prepareForReuse() override { ++preparations; }

    std::shared_ptr<NSTextField> label() const { return view<NSTextField>("label"); }
    std::shared_ptr<NSSlider> slider() const { return view<NSSlider>("slider"); }
    std::shared_ptr<NSTextField> field() const { return view<NSTextField>("field"); }

    int preparations { 0 };
    static inline int made { 0 };

private:
    template <class View> std::shared_ptr<View> view(char const* identifier) const
    {
        return std::dynamic_pointer_cast<View>(descendantWithIdentifier(identifier));
    }
};

/// The folder of a bundle with the cell's interface description.
inline std::shared_ptr<NSBundle> tableTestBundle()
{
    static QTemporaryDir const folder;
    std::filesystem::path const path = folder.path().toStdString() + "/Table.bundle";
    std::filesystem::create_directories(path / "Resources");
    std::ofstream(path / "Resources" / "TestCell.ui") << R"(<ui version="4.0"><class>TestCell</class>
<widget class="TestCell" name="cell">
 <property name="accessibilityTitle" stdset="0"><string notr="true">label</string></property>
 <property name="minimumSize"><size><width>0</width><height>50</height></size></property>
 <property name="maximumSize"><size><width>10000</width><height>50</height></size></property>
 <layout class="QHBoxLayout">
  <item><widget class="QLabel" name="label"/></item>
  <item><widget class="NSSlider" name="slider"/></item>
  <item><widget class="QLineEdit" name="field"/></item>
 </layout>
</widget></ui>)";
    NSRegisterViewClass("TestCell", [] { return std::make_shared<TestCell>(); });
    return NSBundle::bundleWithPath(path);
}

/// A window with a table of cells named by their rows' tokens.
class TableWindow : public ViewWindow {
public:
    TableWindow()
        : ViewWindow({ 300, 200 })
        , table(std::make_shared<NSTableView>())
    {
        table->registerNib(std::make_shared<NSNib>("TestCell", tableTestBundle()), "Cell");
        table->setRowViewProvider([this](std::size_t row) { return makeCell(row); });
        add(table, { {}, { 300, 200 } });
        TestCell::made = 0;
    }

    std::shared_ptr<NSView> makeCell(std::size_t row)
    {
        ++provided;
        auto const& tableRow = table->rows()[row];
        auto const name = std::to_string(tableRow.token);
        if (tableRow.isGroupRow) {
            return NSTextField::labelWithString(name);
        }
        auto const cell = std::dynamic_pointer_cast<TestCell>(table->makeViewWithIdentifier("Cell", nullptr));
        cell->label()->setStringValue(name);
        return cell;
    }

    static std::vector<NSTableRow> rows(std::vector<std::uint64_t> const& tokens)
    {
        std::vector<NSTableRow> result;
        for (auto const token : tokens) {
            result.push_back({ token });
        }
        return result;
    }
    static std::vector<NSTableRow> rowsUpTo(std::size_t count)
    {
        std::vector<std::uint64_t> tokens(count);
        std::iota(tokens.begin(), tokens.end(), 1);
        return rows(tokens);
    }

    std::shared_ptr<TestCell> cell(std::size_t row, bool make = false) const
    {
        return std::dynamic_pointer_cast<TestCell>(table->viewAtColumnRow(0, row, make));
    }
    NSClipView& clip() const { return *table->enclosingScrollView()->contentView(); }
    double offset() const { return clip().bounds().origin.y; }
    QPoint centreOf(NSView const& view) const
    {
        return qtWidget(view)->mapTo(&window, qtWidget(view)->rect().center());
    }
    /// What the rows in sight say, from the top.
    std::vector<std::string> shown() const
    {
        std::vector<std::pair<double, std::string>> texts;
        for (auto const& view : table->subviews()) {
            auto const frame = view->frame();
            if (frame.maxY() <= 0 || frame.origin.y >= 200) {
                continue;
            }
            auto const shownCell = std::dynamic_pointer_cast<TestCell>(view);
            auto const label = shownCell ? shownCell->label() : std::dynamic_pointer_cast<NSTextField>(view);
            texts.emplace_back(frame.origin.y, label ? label->stringValue() : "");
        }
        std::sort(texts.begin(), texts.end());
        std::vector<std::string> result;
        for (auto const& [y, text] : texts) {
            result.push_back(text);
        }
        return result;
    }

    std::shared_ptr<NSTableView> table;
    int provided { 0 };
};
