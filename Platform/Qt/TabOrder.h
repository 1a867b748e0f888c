#pragma once

#include <vector>

class QWidget;

/// Makes Tab go through the controls of a list row by row, where the list itself stands in its
/// window's order. Controls of one row keep their order.
void orderTabsByRow(QWidget& list, std::vector<QWidget*> const& rows);
