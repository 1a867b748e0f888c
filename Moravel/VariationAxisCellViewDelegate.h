#pragma once

#include <memory>

class AxisCellView;

/// Told what the user does in a row. Neither operation names the axis: the row does.
class VariationAxisCellViewDelegate {
public:
    virtual ~VariationAxisCellViewDelegate() = default;
    /// The user chose a value, in design coordinates as the row shows it, not rounded.
    virtual void axisCellViewDidChangeValue(std::shared_ptr<AxisCellView> const& row, double value) = 0;
    /// The user asked for the editor of the row's axis; sent for every row.
    virtual void axisCellViewDidRequestAxisEditor(std::shared_ptr<AxisCellView> const& row) = 0;
};
