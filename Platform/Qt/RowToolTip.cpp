#include "Platform/Qt/RowToolTip.h"

#include "Platform/AppKit/NSTextField.h"
#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/NSTableViewBacking.h"

#include <QHelpEvent>
#include <QToolTip>

namespace {
/// The text of a view's first label; empty without one.
std::string firstLabel(std::shared_ptr<NSView> const& view)
{
    auto const* field = dynamic_cast<NSTextField const*>(view.get());
    if (field && !field->isEditable()) {
        return field->stringValue();
    }
    for (auto const& part : view ? view->subviews() : std::vector<std::shared_ptr<NSView>> {}) {
        if (auto text = firstLabel(part); !text.empty()) {
            return text;
        }
    }
    return {};
}
} // namespace

RowToolTip::RowToolTip(NSTableViewBacking& table)
    : m_table(table)
{
}

bool RowToolTip::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !m_table.widget) {
        return false;
    }
    auto const& help = static_cast<QHelpEvent&>(*event);
    auto* const viewport = m_table.subviewParent();
    auto const text = textAt(viewport->mapFromGlobal(help.globalPos()).y() + m_table.visibleRect().origin.y);
    QToolTip::showText(help.globalPos(), text.toHtmlEscaped(), viewport);
    return true;
}

QString RowToolTip::textAt(double y) const
{
    auto const& rows = m_table.rows;
    if (rows.empty() || y < 0 || y >= m_table.geometry.totalHeight()) {
        return {};
    }
    auto const row = m_table.geometry.rowAt(y);
    auto const name = rows[row].isGroupRow ? std::string() : firstLabel(m_table.viewOfRow(row, false));
    auto heading = row;
    while (heading > 0 && !rows[heading].isGroupRow) {
        --heading;
    }
    if (name.empty() || !rows[heading].isGroupRow) {
        return toQString(name);
    }
    return toQString(firstLabel(m_table.viewOfRow(heading, true)) + ": " + name);
}
