#include "Platform/Qt/TabOrder.h"

#include <QHash>
#include <QWidget>

#include <algorithm>

namespace {

struct Control {
    qsizetype row { 0 };
    QWidget* widget { nullptr };
    bool operator==(Control const&) const = default;
};

/// The controls of the rows in the order in which Tab visits them now. `isUnbroken` tells whether
/// they come at once after the list, with no other control between them.
std::vector<Control> controlsInTabOrder(QWidget& list, std::vector<QWidget*> const& rows, bool& isUnbroken)
{
    QHash<QWidget const*, qsizetype> indices;
    for (auto* row : rows) {
        indices.insert(row, indices.size());
    }
    std::vector<Control> controls;
    bool hasLeft = false;
    isUnbroken = true;
    for (auto* widget = list.nextInFocusChain(); widget && widget != &list;
         widget = widget->nextInFocusChain()) {
        if (!(widget->focusPolicy() & Qt::TabFocus)) {
            continue;
        }
        auto const* outer = widget;
        while (outer && outer != &list && !indices.contains(outer)) {
            outer = outer->parentWidget();
        }
        if (outer && outer != &list) {
            isUnbroken = isUnbroken && !hasLeft;
            controls.push_back({ indices.value(outer), widget });
        } else {
            hasLeft = true;
        }
    }
    return controls;
}

} // namespace

void orderTabsByRow(QWidget& list, std::vector<QWidget*> const& rows)
{
    bool isUnbroken = true;
    auto const now = controlsInTabOrder(list, rows, isUnbroken);
    auto wanted = now;
    std::stable_sort(
        wanted.begin(), wanted.end(), [](auto const& a, auto const& b) { return a.row < b.row; });
    if (isUnbroken && wanted == now) {
        return;
    }
    // The toolkit puts a widget only behind one that takes the keyboard.
    auto const policy = list.focusPolicy();
    list.setFocusPolicy(Qt::TabFocus);
    auto* previous = &list;
    for (auto const& control : wanted) {
        QWidget::setTabOrder(previous, control.widget);
        previous = control.widget;
    }
    list.setFocusPolicy(policy);
}
