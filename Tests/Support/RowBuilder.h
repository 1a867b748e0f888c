#pragma once

#include "Moravel/AxisCellView.h"
#include "Moravel/Plugin.h"
#include "Platform/Foundation/NSBundle.h"
#include "Typloom/TyploomKit/TLPlaceholderView.h"

/// Makes rows from the plug-in's own interface description.
namespace RowBuilder {

/// The plug-in's bundle as it was built, opened; with it the classes of its views are known.
inline std::shared_ptr<NSBundle> openBundle()
{
    static auto const bundle = [] {
        TLRegisterViewClasses();
        std::shared_ptr<TyploomPlugin> principal;
        auto const opened = NSBundle::bundleWithPath(BUILD_FOLDER "/PlugIns/Moravel.bundle");
        TyploomPluginEntry("SidebarViewController", &principal);
        return opened;
    }();
    return bundle;
}

inline std::shared_ptr<AxisCellView> emptyRow()
{
    return std::dynamic_pointer_cast<AxisCellView>(
        NSNib("AxisCellView", openBundle()).instantiateOrStop(nullptr));
}

/// A row that shows a content, held by `state`.
inline std::shared_ptr<AxisCellView> row(
    std::shared_ptr<TableState> const& state, SidebarItem const& item, RowContent content)
{
    state->setRowContentByItem({ { item, std::move(content) } });
    auto row = emptyRow();
    row->setItem(item);
    row->setTableState(state);
    row->observeTableState();
    row->reloadRowContent();
    row->updateEditingHighlight();
    return row;
}

/// A row of an axis (or of none) without a state of its own.
inline std::shared_ptr<AxisCellView> rowForAxis(std::shared_ptr<TLAxis> const& axis, Section section)
{
    auto const state = std::make_shared<TableState>();
    return row(state, { section, axis ? axis->axisId() : "none" }, { axis, {}, {}, 0 });
}

}
