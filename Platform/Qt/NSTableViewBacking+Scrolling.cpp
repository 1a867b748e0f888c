#include "Platform/Qt/NSTableViewBacking.h"

#include <QScrollBar>

#include <algorithm>
#include <cmath>

void NSTableViewBacking::updateScrollRange()
{
    m_updatesScrollRange = true;
    auto* bar = m_scroller->verticalScrollBar();
    double const height = m_scroller->viewport()->height();
    double const whole = geometry.totalHeight() + m_insets.top + m_insets.bottom;
    bar->setPageStep(static_cast<int>(height));
    bar->setRange(0, static_cast<int>(std::max(0.0, std::ceil(whole - height))));
    m_updatesScrollRange = false;
}

NSRect NSTableViewBacking::visibleRect() const
{
    if (!widget) {
        return {};
    }
    auto const* seen = m_scroller->viewport();
    return { { 0, m_scroller->verticalScrollBar()->value() - m_insets.top },
        { static_cast<double>(seen->width()), static_cast<double>(seen->height()) } };
}

void NSTableViewBacking::scrollTo(double y)
{
    if (widget) {
        updateScrollRange();
        m_scroller->verticalScrollBar()->setValue(static_cast<int>(std::lround(y + m_insets.top)));
    }
}

void NSTableViewBacking::scrollRowToVisible(std::size_t row)
{
    if (row >= rows.size() || !widget) {
        return;
    }
    auto const visible = visibleRect();
    double const top = geometry.top(row);
    double const bottom = top + geometry.height(row);
    if (top < visible.origin.y + m_insets.top) {
        scrollTo(top - m_insets.top);
    } else if (bottom > visible.maxY() - m_insets.bottom) {
        scrollTo(std::min(top - m_insets.top, bottom + m_insets.bottom - visible.size.height));
    }
}

void NSTableViewBacking::setContentInsets(NSEdgeInsets insets)
{
    double const y = visibleRect().origin.y;
    m_insets = insets;
    scrollTo(y);
    tile();
}

std::vector<NSTableViewBacking::Place> NSTableViewBacking::placesToKeep() const
{
    auto const visible = visibleRect();
    bool const isAtTop = m_scroller->verticalScrollBar()->value() == 0;
    std::vector<RowView> inSight;
    for (auto const& [token, live] : m_live) {
        double const top = geometry.top(live.row);
        bool const isPressed = live.holds(m_scroller->pressedControl());
        bool const isInSight = top < visible.maxY() && top + geometry.height(live.row) > visible.origin.y;
        // A list at its top stays there, and shows what is new above; only a drag has its row kept.
        if (isPressed || (isInSight && !isAtTop)) {
            inSight.push_back(live);
        }
    }
    auto const rank = [&](RowView const& row) {
        return row.holds(m_scroller->pressedControl())     ? 0
            : row.holds(m_scroller->controlWithKeyboard()) ? 1
                                                           : 2;
    };
    std::sort(inSight.begin(), inSight.end(),
        [&](auto const& a, auto const& b) { return std::pair(rank(a), a.row) < std::pair(rank(b), b.row); });
    std::vector<Place> places;
    for (auto const& live : inSight) {
        places.push_back({ rows[live.row].token, geometry.top(live.row) - visible.origin.y });
    }
    return places;
}

void NSTableViewBacking::keepPlace(std::vector<Place> const& places)
{
    for (auto const& place : places) {
        auto const live = m_live.find(place.token);
        if (live != m_live.end()) {
            m_updatesScrollRange = true; // The caller lays out the rows.
            m_scroller->verticalScrollBar()->setValue(
                static_cast<int>(std::lround(geometry.top(live->second.row) - place.y + m_insets.top)));
            m_updatesScrollRange = false;
            return;
        }
    }
}

std::shared_ptr<NSView> NSTableViewBacking::lastingViewOfRow(std::size_t row) const
{
    auto const live = row < rows.size() ? m_live.find(rows[row].token) : m_live.end();
    bool const lasts = live != m_live.end() && (wantedRows().contains(row) || isHeld(live->second));
    return lasts ? live->second.view : nullptr;
}

std::optional<std::size_t> NSTableViewBacking::rowWithToken(std::uint64_t token) const
{
    if (auto const live = m_live.find(token); live != m_live.end()) {
        return live->second.row;
    }
    auto const row
        = std::find_if(rows.begin(), rows.end(), [&](auto const& each) { return each.token == token; });
    return row == rows.end() ? std::nullopt : std::optional(static_cast<std::size_t>(row - rows.begin()));
}

std::optional<std::uint64_t> NSTableViewBacking::tokenOf(QWidget const& rowWidget) const
{
    for (auto const& [token, live] : m_live) {
        if (qtWidget(*live.view) == &rowWidget) {
            return token;
        }
    }
    return std::nullopt;
}
