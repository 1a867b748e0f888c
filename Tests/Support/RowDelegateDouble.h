#pragma once

#include "Moravel/VariationAxisCellViewDelegate.h"

#include <functional>
#include <vector>

/// Keeps what rows report.
class RowDelegateDouble final : public VariationAxisCellViewDelegate {
public:
    void axisCellViewDidChangeValue(std::shared_ptr<AxisCellView> const& row, double value) override
    {
        values.push_back(value);
        rows.push_back(row);
        if (onChange) {
            onChange(value);
        }
    }
    void axisCellViewDidRequestAxisEditor(std::shared_ptr<AxisCellView> const& row) override
    {
        ++editorRequests;
        rows.push_back(row);
    }

    std::vector<double> values;
    int editorRequests { 0 };
    std::vector<std::shared_ptr<AxisCellView>> rows; ///< The sender of each report.
    std::function<void(double)> onChange;
};
