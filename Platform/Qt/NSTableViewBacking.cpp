#include "Platform/Qt/NSTableViewBacking.h"

#include "Platform/AppKit/NSTextField.h"
#include "Platform/AppKit/RowDifference.h"
#include "Platform/Qt/RowToolTip.h"
#include "Platform/Qt/TabOrder.h"
#include "Platform/Qt/Tracking.h"

#include <algorithm>
#include <cmath>

namespace {

/// Rows beyond each end of what can be seen that have views too, so that Tab finds the next row.
constexpr std::size_t margin = 2;
/// Headers stand this far from both sides.
constexpr int headerIndent = 12;

void styleHeader(NSView& view)
{
    if (auto* label = dynamic_cast<NSTextField*>(&view); label && !label->isEditable()) {
        label->setFont(NSFont::systemFont(NSFont::smallSystemFontSize(), NSFontWeight::semibold));
        label->setTextColor(NSColor::secondaryLabelColor());
    }
}

} // namespace

bool NSTableViewBacking::RowView::holds(QWidget const* control) const
{
    auto const* rowWidget = qtWidget(*view);
    return control && rowWidget && (rowWidget == control || rowWidget->isAncestorOf(control));
}

NSTableViewBacking::NSTableViewBacking()
    : NSViewBacking(new QtTableView)
    , m_scroller(static_cast<QtTableView*>(widget.data()))
{
}

NSTableViewBacking::~NSTableViewBacking()
{
    if (widget) {
        m_scroller->hooks = {};
        m_rowToolTip.reset();
    }
}

void NSTableViewBacking::attach(NSView& owner)
{
    NSViewBacking::attach(owner);
    m_scroller->hooks = {
        .visibleRectChanged = [this] { m_updatesScrollRange ? void() : tile(); },
        .tabbedTo =
            [this](QWidget* control) {
                for (auto const& [token, live] : m_live) {
                    if (live.holds(control)) {
                        return scrollRowToVisible(live.row);
                    }
                }
            },
        .holdEnded = [this] { tileLater(); },
    };
    m_rowToolTip = std::make_unique<RowToolTip>(*this);
    m_scroller->viewport()->installEventFilter(m_rowToolTip.get());
}

QWidget* NSTableViewBacking::subviewParent()
{
    return widget ? m_scroller->viewport() : nullptr;
}

NSTableView::Changes NSTableViewBacking::setRows(std::vector<NSTableRow> wanted)
{
    if (!widget) {
        return {};
    }
    auto const difference = rowDifference(rows, wanted);
    NSTableView::Changes const changes { .removed = difference.removed.size(),
        .inserted = difference.inserted.size(),
        .moved = difference.moved.size() };
    if (changes == NSTableView::Changes {}) {
        return changes;
    }
    auto const places = placesToKeep();
    rows = std::move(wanted);
    geometry.setRows(rows);
    auto const gone = renumberRows();
    m_ordersKeyboard = true;
    updateScrollRange();
    keepPlace(places);
    takeBack(gone);
    accessibleRows.forgetRemoved(*this);
    tile();
    return changes;
}

/// Takes out the views of rows that are no more, and returns them.
std::vector<NSTableViewBacking::RowView> NSTableViewBacking::renumberRows()
{
    auto former = std::move(m_live);
    m_live.clear();
    for (std::size_t row = 0; row < rows.size() && !former.empty(); ++row) {
        auto const live = former.find(rows[row].token);
        if (live != former.end() && live->second.isGroupRow == rows[row].isGroupRow) {
            live->second.row = row;
            m_live.insert(former.extract(live));
        }
    }
    std::vector<RowView> gone;
    for (auto& [token, live] : former) {
        gone.push_back(std::move(live));
    }
    return gone;
}

void NSTableViewBacking::tile()
{
    if (!widget) {
        return;
    }
    auto const keep = view->weak_from_this().lock();
    auto const pass = ++m_pass;
    updateScrollRange();
    releaseRows(wantedRows());
    for (auto row = wantedRows().first; row < wantedRows().end; ++row) {
        auto const token = rows[row].token;
        if (!m_live.contains(token) && !m_making.contains(token)) {
            makeRow(row);
            if (pass != m_pass) {
                return tile();
            }
        }
    }
    placeRows();
    if (std::exchange(m_ordersKeyboard, false)) {
        orderKeyboard();
    }
    scheduleTrackingCheck();
}

NSTableViewBacking::Range NSTableViewBacking::wantedRows() const
{
    if (rows.empty()) {
        return {};
    }
    auto const visible = visibleRect();
    auto const first = geometry.rowAt(visible.origin.y);
    auto const last = geometry.rowAt(visible.maxY());
    return { first - std::min(first, margin), std::min(last + 1 + margin, rows.size()) };
}

bool NSTableViewBacking::isHeld(RowView const& row) const
{
    return row.holds(m_scroller->controlWithKeyboard()) || row.holds(m_scroller->pressedControl());
}

void NSTableViewBacking::releaseRows(Range wanted)
{
    std::vector<RowView> released;
    for (auto live = m_live.begin(); live != m_live.end();) {
        if (wanted.contains(live->second.row) || isHeld(live->second)) {
            ++live;
        } else {
            released.push_back(std::move(live->second));
            live = m_live.erase(live);
        }
    }
    takeBack(released);
}

void NSTableViewBacking::takeBack(std::vector<RowView> const& released)
{
    for (auto const& row : released) {
        if (auto* rowWidget = qtWidget(*row.view)) {
            accessibleRows.viewGoes(*rowWidget);
        }
        m_scroller->takeOut([&] { pool.takeBack(row.view); });
    }
}

void NSTableViewBacking::makeRow(std::size_t row)
{
    auto const token = rows[row].token;
    auto const provide = provider; // It may be replaced while it runs.
    m_making.insert(token);
    auto made = provide ? provide(row) : nullptr;
    m_making.erase(token);
    if (!made) {
        made = std::make_shared<NSView>();
    }
    auto const now
        = std::find_if(rows.begin(), rows.end(), [&](auto const& other) { return other.token == token; });
    if (now == rows.end()) {
        takeBack({ { made, row, false } });
    } else {
        adopt(made, static_cast<std::size_t>(now - rows.begin()));
    }
}

void NSTableViewBacking::adopt(std::shared_ptr<NSView> const& made, std::size_t row)
{
    std::erase_if(m_live, [&](auto const& live) { return live.second.view == made; });
    RowView const live { made, row, rows[row].isGroupRow };
    m_live.emplace(rows[row].token, live);
    m_ordersKeyboard = true;
    if (live.isGroupRow) {
        styleHeader(*made);
    } else {
        measure(live);
    }
    view->addSubview(made);
    if (auto* rowWidget = qtWidget(*made)) {
        accessibleRows.viewAdded(*m_scroller, rows[row].token, *rowWidget);
    }
}

void NSTableViewBacking::measure(RowView const& row)
{
    auto const* rowWidget = qtWidget(*row.view);
    double const wanted = std::clamp(std::ceil(row.view->fittingSize().height),
        static_cast<double>(rowWidget->minimumHeight()), static_cast<double>(rowWidget->maximumHeight()));
    if (wanted < 1 || wanted == geometry.itemHeight() || (m_isMeasured && wanted < geometry.itemHeight())) {
        return;
    }
    m_isMeasured = true;
    auto const places = placesToKeep();
    geometry.setItemHeight(wanted);
    updateScrollRange();
    keepPlace(places);
    ++m_pass; // Other rows are in sight now.
}

void NSTableViewBacking::placeRows()
{
    auto const width = m_scroller->viewport()->width();
    auto const offset = visibleRect().origin.y;
    std::vector<RowView> ordered;
    for (auto const& [token, live] : m_live) {
        ordered.push_back(live);
    }
    std::sort(ordered.begin(), ordered.end(), [](auto const& a, auto const& b) { return a.row < b.row; });
    std::vector<std::shared_ptr<NSView>> views;
    for (auto const& live : ordered) {
        auto const indent = live.isGroupRow ? headerIndent : 0;
        if (auto* rowWidget = qtWidget(*live.view)) {
            rowWidget->setGeometry(indent, static_cast<int>(std::lround(geometry.top(live.row) - offset)),
                std::max(0, width - 2 * indent), static_cast<int>(std::lround(geometry.height(live.row))));
        }
        views.push_back(live.view);
    }
    subviews = std::move(views);
}

std::vector<QWidget*> NSTableViewBacking::rowWidgets() const
{
    std::vector<QWidget*> widgets;
    for (auto const& row : subviews) {
        if (auto* rowWidget = qtWidget(*row)) {
            widgets.push_back(rowWidget);
        }
    }
    return widgets;
}

void NSTableViewBacking::orderKeyboard()
{
    orderTabsByRow(*m_scroller, rowWidgets());
}

std::shared_ptr<NSView> NSTableViewBacking::viewOfRow(std::size_t row, bool makeIfNecessary)
{
    if (row >= rows.size() || !widget) {
        return nullptr;
    }
    auto const token = rows[row].token;
    if (!m_live.contains(token) && makeIfNecessary && !m_making.contains(token)) {
        makeRow(row);
        placeRows();
        tileLater(); // Takes the view back if its row is out of sight.
    }
    auto const live = m_live.find(token);
    return live == m_live.end() ? nullptr : live->second.view;
}

void NSTableViewBacking::tileLater()
{
    if (!std::exchange(m_tilesLater, true)) {
        QMetaObject::invokeMethod(
            m_scroller,
            [weak = view->weak_from_this()] {
                if (auto const table = std::dynamic_pointer_cast<NSTableView>(weak.lock())) {
                    auto& backing = static_cast<NSTableViewBacking&>(table->backing());
                    backing.m_tilesLater = false;
                    backing.tile();
                }
            },
            Qt::QueuedConnection);
    }
}
