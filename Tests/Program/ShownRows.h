#pragma once

#include "Tests/Program/ProgramWindow.h"

#include <sstream>

/// What a sidebar shows, a line a row: the name, a "|", and what else there is.
inline std::vector<std::string> rowsOf(TLSidebar const& sidebar)
{
    auto const table = std::dynamic_pointer_cast<NSTableView>(
        sidebar.controllerOfTab(0)->view()->descendantWithIdentifier("tableView"));
    std::vector<std::string> rows;
    for (std::size_t index = 0; index < table->numberOfRows(); ++index) {
        if (table->rows()[index].isGroupRow) {
            continue;
        }
        auto const view = table->viewAtColumnRow(0, index, true);
        auto const slider = ProgramWindow::in<TLLandmarkSlider>(view, "slider");
        std::ostringstream text;
        text << ProgramWindow::in<NSTextField>(view, "nameLabel")->stringValue() << "| " << slider->minValue()
             << " " << slider->doubleValue() << " " << slider->maxValue() << " " << slider->isEnabled()
             << slider->isHidden() << " "
             << ProgramWindow::in<NSTextField>(view, "valueField")->stringValue();
        for (auto const landmark : slider->landmarks().value_or(std::vector<double>())) {
            text << " " << landmark;
        }
        rows.push_back(text.str());
    }
    return rows;
}

/// What a sidebar that is made now shows of the window.
inline std::vector<std::string> rowsOfNewSidebar(TLDocumentWindow const& window)
{
    TLSidebar const fresh(window.editViewController());
    dynamic_cast<NSViewController&>(*fresh.controllerOfTab(0)).viewDidAppear();
    return rowsOf(fresh);
}
