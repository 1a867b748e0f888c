#include "Platform/Qt/TableAccessibility.h"

#include "Platform/Qt/NSTableViewBacking.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

NSTableViewBacking* tableOf(QWidget const* widget)
{
    auto* const table = dynamic_cast<NSTableView*>(viewOfWidget(widget));
    return table ? &static_cast<NSTableViewBacking&>(table->backing()) : nullptr;
}

/// A list item, or the heading of a section.
class AccessibleRow final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleRow(QtTableView& scroller, std::uint64_t token)
        : m_scroller(&scroller)
        , m_token(token)
    {
    }

    bool isValid() const override { return row().has_value(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_scroller ? m_scroller->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_scroller.data());
    }

    int childCount() const override { return rowWidget() ? 1 : 0; }
    QAccessibleInterface* child(int index) const override
    {
        return index == 0 ? QAccessible::queryAccessibleInterface(rowWidget()) : nullptr;
    }
    int indexOfChild(QAccessibleInterface const* child) const override
    {
        return child && child->object() && child->object() == rowWidget() ? 0 : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        return rect().contains(x, y) ? child(0) : nullptr;
    }

    QRect rect() const override
    {
        auto const* const list = table();
        auto const place = row();
        if (!list || !place) {
            return {};
        }
        auto const top = list->geometry.top(*place) - list->visibleRect().origin.y;
        QPoint const origin(0, static_cast<int>(std::lround(top)));
        return { m_scroller->viewport()->mapToGlobal(origin),
            QSize(m_scroller->viewport()->width(), static_cast<int>(list->geometry.height(*place))) };
    }

    QAccessible::Role role() const override
    {
        return isHeading() ? QAccessible::Heading : QAccessible::ListItem;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.focusable = !isHeading();
        auto const* const list = parent();
        // Out of sight; "offscreen" would be told as shown.
        state.invisible = !list || list->state().invisible || !list->rect().intersects(rect());
        return state;
    }

    /// A row out of sight is made for a moment, to see what it is called.
    QString text(QAccessible::Text kind) const override
    {
        auto const place = row();
        if (kind != QAccessible::Name || !place) {
            return {};
        }
        auto const view = table()->viewOfRow(*place, true);
        auto* const widget = view ? qtWidget(*view) : nullptr;
        auto const* const label = qobject_cast<QLabel const*>(widget);
        return !widget ? QString() : label ? label->text() : widget->accessibleName();
    }
    void setText(QAccessible::Text, QString const&) override { }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override
    {
        return isHeading() ? QStringList() : QStringList(setFocusAction());
    }
    QStringList keyBindingsForAction(QString const&) const override { return {}; }
    /// Brings the row into sight and the keyboard to its first control.
    void doAction(QString const& name) override
    {
        auto const place = row();
        if (name != setFocusAction() || !place) {
            return;
        }
        table()->scrollRowToVisible(*place);
        auto const view = table()->viewOfRow(*place, true);
        auto* const widget = view ? qtWidget(*view) : nullptr;
        for (auto* next = widget ? widget->nextInFocusChain() : nullptr; next && next != widget;
             next = next->nextInFocusChain()) {
            if (widget->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) && next->isEnabled()
                && next->isVisibleTo(widget)) {
                next->setFocus(Qt::TabFocusReason);
                return;
            }
        }
    }

private:
    NSTableViewBacking* table() const { return tableOf(m_scroller); }
    std::optional<std::size_t> row() const
    {
        auto const* const list = table();
        return list ? list->rowWithToken(m_token) : std::nullopt;
    }
    bool isHeading() const
    {
        auto const place = row();
        return place && table()->rows[*place].isGroupRow;
    }
    /// The view of a row with controls, where it has one now. A heading is all told by its name.
    QWidget* rowWidget() const
    {
        auto const place = row();
        auto const view = place && !isHeading() ? table()->lastingViewOfRow(*place) : nullptr;
        return view ? qtWidget(*view) : nullptr;
    }

    QPointer<QtTableView> m_scroller;
    std::uint64_t m_token;
};

class AccessibleTable final : public QAccessibleWidget {
public:
    explicit AccessibleTable(QtTableView& scroller)
        : QAccessibleWidget(&scroller, QAccessible::List)
    {
    }

    int childCount() const override { return rowCount() + (scrollerParts() ? 1 : 0); }
    QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        return index < rowCount() ? entry(static_cast<std::size_t>(index))
                                  : QAccessible::queryAccessibleInterface(scrollerParts());
    }
    int indexOfChild(QAccessibleInterface const* child) const override
    {
        if (child && child->object() && child->object() == scrollerParts()) {
            return rowCount();
        }
        for (int index = 0; child && index < rowCount(); ++index) {
            if (entry(static_cast<std::size_t>(index)) == child) {
                return index;
            }
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        auto const place = scroller().viewport()->mapFromGlobal(QPoint(x, y));
        auto const* const list = tableOf(&scroller());
        if (!list || list->rows.empty() || !scroller().viewport()->rect().contains(place)) {
            return QAccessibleWidget::childAt(x, y);
        }
        auto const inList = list->visibleRect().origin.y + place.y();
        return inList < 0 || inList >= list->geometry.totalHeight() ? nullptr
                                                                    : entry(list->geometry.rowAt(inList));
    }

private:
    QtTableView& scroller() const { return static_cast<QtTableView&>(*widget()); }
    int rowCount() const
    {
        auto const* const list = tableOf(&scroller());
        return list ? static_cast<int>(list->rows.size()) : 0;
    }
    /// The toolkit's own frame around the scroll bar; null while there is nothing to scroll.
    QWidget* scrollerParts() const
    {
        auto* const bar = scroller().verticalScrollBar();
        return bar->isVisible() ? bar->parentWidget() : nullptr;
    }
    QAccessibleInterface* entry(std::size_t row) const
    {
        auto* const list = tableOf(&scroller());
        return list->accessibleRows.entry(scroller(), list->rows[row].token);
    }
};

void tell(QAccessibleInterface* interface, QAccessible::Event what)
{
    if (interface) {
        QAccessibleEvent event(interface, what);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace

AccessibleRows::~AccessibleRows()
{
    for (auto const& [token, id] : m_entries) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

QAccessibleInterface* AccessibleRows::entry(QtTableView& table, std::uint64_t token)
{
    auto const known = m_entries.find(token);
    if (known != m_entries.end()) {
        return QAccessible::accessibleInterface(known->second);
    }
    auto* const made = new AccessibleRow(table, token);
    m_entries.emplace(token, QAccessible::registerAccessibleInterface(made));
    return made;
}

void AccessibleRows::forgetRemoved(NSTableViewBacking const& table)
{
    if (m_entries.empty()) {
        return;
    }
    std::unordered_map<std::uint64_t, QAccessible::Id> kept;
    for (auto const& row : table.rows) {
        if (auto const entry = m_entries.extract(row.token)) {
            kept.emplace(row.token, entry.mapped());
        }
    }
    for (auto const& [token, id] : std::exchange(m_entries, kept)) {
        tell(QAccessible::accessibleInterface(id), QAccessible::ObjectDestroyed);
        QAccessible::deleteAccessibleInterface(id);
    }
}

void AccessibleRows::viewAdded(QtTableView& table, std::uint64_t token, QWidget& rowWidget)
{
    if (!QAccessible::isActive()) {
        return;
    }
    bool const isNew = !m_entries.contains(token);
    auto* const row = entry(table, token);
    if (isNew) {
        tell(row, QAccessible::ObjectCreated);
    }
    if (row->childCount() > 0) {
        tell(QAccessible::queryAccessibleInterface(&rowWidget), QAccessible::ObjectCreated);
    }
}

void AccessibleRows::viewGoes(QWidget& rowWidget) const
{
    if (QAccessible::isActive()) {
        tell(QAccessible::queryAccessibleInterface(&rowWidget), QAccessible::ObjectDestroyed);
    }
}

QAccessibleInterface* makeAccessibleTable(QWidget& widget)
{
    auto* const scroller = qobject_cast<QtTableView*>(&widget);
    return scroller ? new AccessibleTable(*scroller) : nullptr;
}

QAccessibleInterface* accessibleRowOf(QWidget const& rowWidget)
{
    auto const* const viewport = rowWidget.parentWidget();
    auto* const scroller = viewport ? qobject_cast<QtTableView*>(viewport->parentWidget()) : nullptr;
    auto* const list = scroller && scroller->viewport() == viewport ? tableOf(scroller) : nullptr;
    auto const token = list ? list->tokenOf(rowWidget) : std::nullopt;
    return token ? list->accessibleRows.entry(*scroller, *token) : nullptr;
}
