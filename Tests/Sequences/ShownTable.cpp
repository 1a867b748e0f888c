#include "Tests/Sequences/ShownTable.h"

#include "Platform/AppKit/NSPopover.h"

#include <array>
#include <algorithm>
#include <cmath>

/// Keeps which rows were told, and whether contents and table already agreed when they were.
class ShownTable::Listener final : public NSObject {
public:
    explicit Listener(std::weak_ptr<SidebarViewController> sidebar)
        : m_sidebar(std::move(sidebar))
    {
    }
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods { NSMethodMake("rowDidChange:", &Listener::rowDidChange) };
        return methods;
    }
    void rowDidChange(std::shared_ptr<NSNotification> const& notification)
    {
        auto const* const item = notification->userInfoValue<SidebarItem>(moravelItemKey);
        auto const sidebar = m_sidebar.lock();
        told.push_back(item ? *item : SidebarItem {});
        auto const content = sidebar->tableState()->rowContentByItem().find(told.back());
        if (content != sidebar->tableState()->rowContentByItem().end()) {
            names[told.back()] = content->second.axis->name();
        }
        auto const& snapshot = sidebar->dataSource()->snapshot();
        isMirror = isMirror && item && sidebar->dataSource()->rowForItem(*item)
            && sidebar->tableState()->rowContentByItem().contains(*item)
            && snapshot.numberOfItems() == sidebar->tableState()->rowContentByItem().size()
            && snapshot.numberOfItems() + snapshot.numberOfSections() == sidebar->tableView()->numberOfRows();
    }

    std::vector<SidebarItem> told;
    std::unordered_map<SidebarItem, std::string> names; ///< Of the axes, when their rows were told.
    bool isMirror { true };

private:
    std::weak_ptr<SidebarViewController> m_sidebar;
};

ShownTable::ShownTable(std::shared_ptr<SidebarViewController> sidebar, std::shared_ptr<LiveHost> host)
    : m_sidebar(std::move(sidebar))
    , m_host(std::move(host))
    , m_listener(std::make_shared<Listener>(m_sidebar))
{
    NSNotificationCenter::defaultCenter().addObserver(
        m_listener, "rowDidChange:", moravelRowContentDidChange, m_sidebar->tableState());
}

std::vector<SidebarItem> ShownTable::shownItems() const
{
    std::vector<SidebarItem> items;
    for (auto const& section : m_sidebar->dataSource()->snapshot().sections()) {
        require(!section.items.empty(), "a section without rows");
        items.insert(items.end(), section.items.begin(), section.items.end());
    }
    return items;
}

/// By their row in the table, those that there are.
std::map<std::size_t, std::shared_ptr<AxisCellView>> ShownTable::views() const
{
    std::map<std::size_t, std::shared_ptr<AxisCellView>> result;
    auto const table = m_sidebar->tableView();
    for (std::size_t row = 0; row < table->numberOfRows(); ++row) {
        if (auto const view
            = std::dynamic_pointer_cast<AxisCellView>(table->viewAtColumnRow(0, row, false))) {
            result.emplace(row, view);
        }
    }
    return result;
}

std::vector<std::shared_ptr<AxisCellView>> ShownTable::rows() const
{
    std::vector<std::shared_ptr<AxisCellView>> result;
    for (auto const& [index, view] : views()) {
        result.push_back(view);
    }
    return result;
}

double ShownTable::scrollPosition() const
{
    return m_sidebar->tableView()->enclosingScrollView()->contentView()->bounds().origin.y;
}

void ShownTable::begin(bool isTall)
{
    m_isTall = isTall;
    m_items = shownItems();
    m_contents = m_sidebar->tableState()->rowContentByItem();
    m_listener->told.clear();
    m_touched.clear();
    requireConsistent();
    m_views.clear();
    m_typing.reset();
    m_dragging.reset();
    for (auto const& row : rows()) {
        m_views[*row->item()] = row;
        if (row->valueField()->isFirstResponder()) {
            m_typing = Held { row, *row->item(), row->valueField()->stringValue() };
        }
        if (row->slider()->isTracking()) {
            m_dragging = Held { row, *row->item(), "" };
        }
    }
    m_layer = m_sidebar->activeLayer();
    m_scrollPosition = scrollPosition();
    m_calls = m_host->state->calls;
}

void ShownTable::forget()
{
    m_contents.clear();
}

void ShownTable::touched(AxisCellView const& row)
{
    m_touched.insert(*row.item());
    m_shown[*row.item()].isTouched = true;
    m_shown[*row.item()].isTyped = true;
}

void ShownTable::requireQuiet()
{
    require(m_listener->told.empty(), "told without a refresh");
    require(shownItems() == m_items, "other rows without a refresh");
    require(m_sidebar->tableState()->rowContentByItem() == m_contents, "other contents without a refresh");
    requireConsistent();
}

void ShownTable::requireFresh()
{
    auto const hasHost = m_sidebar->controller() != nullptr;
    auto const fresh = hasHost ? freshRows(*m_host, m_sidebar->filterQuery()) : std::vector<FreshRow> {};
    auto const& contents = m_sidebar->tableState()->rowContentByItem();
    require(contents.size() == fresh.size(), "not as many contents as rows");
    std::vector<SidebarItem> items;
    for (auto const& row : fresh) {
        auto const content = contents.find(row.item);
        require(content != contents.end(), "no content: " + describe(row));
        require(content->second == row.content,
            "wanted " + describe(row) + ", shown " + describe({ row.item, content->second }));
        items.push_back(row.item);
    }
    require(shownItems() == items, "other rows, or another order, than a fresh build");
    require(
        m_sidebar->activeLayer() == (hasHost ? freshActiveLayer(*m_host) : nullptr), "another active layer");
    requireAccessories(items.empty());
    requireConsistent();
}

void ShownTable::requireRefreshed(std::optional<SidebarItem> const& forced)
{
    requireFresh();
    std::unordered_map<SidebarItem, int> wanted;
    for (auto const& [item, content] : m_sidebar->tableState()->rowContentByItem()) {
        auto const before = m_contents.find(item);
        if (before == m_contents.end() || before->second != content || forced == item) {
            wanted[item] = 1;
        }
    }
    std::unordered_map<SidebarItem, int> told;
    for (auto const& item : m_listener->told) {
        ++told[item];
    }
    for (auto const& [item, count] : told) {
        require(wanted.contains(item), "told for nothing: " + describe(item));
        require(count == 1, "told twice: " + describe(item));
    }
    require(told.size() == wanted.size(), "a row whose content changed was not told");
    requireKept();
    m_listener->told.clear();
    m_sidebar->applyTableModel(m_sidebar->makeTableModel(), nullptr, {});
    require(m_listener->told.empty(), "told by a refresh without a change");
    require(m_host->state->calls == m_calls, "a refresh asks nothing of the host");
}

void ShownTable::requireScrolledForLayer() const
{
    auto const isSameLayer = m_layer.lock() == m_sidebar->activeLayer();
    require(isSameLayer || scrollPosition() == 0, "another layer is shown from the top");
    require(!isSameLayer || shownItems() != m_items || scrollPosition() == m_scrollPosition,
        "the same layer does not scroll");
}

bool ShownTable::stays(SidebarItem const& item) const
{
    return m_sidebar->dataSource()->rowForItem(item).has_value();
}

void ShownTable::requireKept() const
{
    for (auto const& [index, view] : views()) {
        auto const before = m_views.find(*view->item());
        auto const isKept = before != m_views.end() && before->second.lock() == view;
        require(
            !m_isTall || isKept || before == m_views.end(), "another view for " + describe(*view->item()));
    }
    requireHeld(m_typing, true);
    requireHeld(m_dragging, false);
}

/// Where the row can still be moved, the hand is not taken off it, and what was typed stays if the row was
/// not told.
void ShownTable::requireHeld(std::optional<Held> const& held, bool isTyping) const
{
    if (!held || !stays(held->item)) {
        return;
    }
    auto const row = std::dynamic_pointer_cast<AxisCellView>(held->view.lock());
    require(row && row->item() == held->item, "the view of a held row has gone");
    if (!freshIsUsable({ held->item, m_sidebar->tableState()->rowContentByItem().at(held->item) })) {
        return;
    }
    if (isTyping) {
        require(row->valueField()->isFirstResponder(), "the keyboard was taken from a field");
        auto const& told = m_listener->told;
        auto const wasTold = std::ranges::find(told, held->item) != told.end();
        require(wasTold || row->valueField()->stringValue() == held->text, "what was typed has gone");
    } else {
        require(row->slider()->isTracking(), "a drag was ended");
    }
}

void ShownTable::requireAccessories(bool isEmpty) const
{
    auto const placeholder = m_sidebar->placeholderView();
    require(placeholder->isHidden() == !isEmpty, "the placeholder");
    auto const* const title = m_sidebar->filterQuery().empty() ? "No Axes" : "No Matches";
    require(!isEmpty || placeholder->title() == title, "the placeholder's title");
    require(m_sidebar->addButton()->isEnabled() == (m_sidebar->activeLayer() != nullptr), "the plus button");
}

void ShownTable::requireConsistent()
{
    require(m_listener->isMirror, "a row was told before the table and the contents agreed");
    auto const& state = *m_sidebar->tableState();
    auto const& editor = m_sidebar->editGlyphAxisPopover();
    require(NSPopover::shownPopovers().size() <= 1, "two popovers");
    require(!editor || editor->isShown(), "an editor that nobody sees");
    require(state.editingItem().has_value() == (editor != nullptr), "the edited item without its editor");
    require(state.rowContentByItem().size() == m_sidebar->dataSource()->snapshot().numberOfItems(),
        "contents and rows differ");
    for (auto const& [index, row] : views()) {
        require(row->item() && m_sidebar->dataSource()->rowForItem(*row->item()) == index,
            "a view in another row");
        auto const& content = state.rowContentByItem().at(*row->item());
        auto const& told = m_listener->told;
        auto& shown = m_shown[*row->item()];
        auto const isNewView = shown.view.lock() != row;
        if (isNewView || std::ranges::find(told, *row->item()) != told.end()) {
            auto const isTouched = m_touched.contains(*row->item());
            // A number that is shown again leaves alone what is being typed in its place.
            auto const before = m_contents.find(*row->item());
            auto const isSameText
                = before != m_contents.end() && std::abs(before->second.position - content.position) < 1;
            auto const isTyped = isTouched || (shown.isTyped && isSameText);
            auto const& name = isNewView ? content.axis->name() : m_listener->names[*row->item()];
            shown = { row, name, isTouched, isTyped };
        }
        requireRow(*row, content, shown);
    }
}

void ShownTable::requireRow(AxisCellView const& row, RowContent const& content, Shown const& shown) const
{
    auto const name = describe(*row.item());
    require(row.axis() == content.axis, "another axis in " + name);
    require(row.nameLabel()->stringValue() == shown.name, "another name in " + name);
    require(row.nameLabel()->isEnabled(), "a faint name in " + name);
    require(row.isHighlighted() == (m_sidebar->tableState()->editingItem() == row.item()),
        "the outline of " + name);
    requireControls(row, { *row.item(), content }, shown);
}

void ShownTable::requireControls(AxisCellView const& row, FreshRow const& fresh, Shown const& shown) const
{
    auto const usable = freshIsUsable(fresh);
    auto const isMade = !usable && fresh.item.section == Section::glyph;
    auto const range = isMade ? std::vector<double> { 0, 0, 1 } : *fresh.content.range;
    auto const position = isMade ? 0 : fresh.content.position;
    auto const& slider = *row.slider();
    auto const& field = *row.valueField();
    auto const name = describe(fresh);
    require(slider.isEnabled() == usable && slider.isHidden() == !usable, "the slider of " + name);
    require(field.isEnabled() == usable && field.isHidden() == !usable, "the field of " + name);
    require(slider.minValue() == range[0] && slider.maxValue() == range[2], "the bounds of " + name);
    require(slider.neutralValue() == range[1], "the neutral value of " + name);
    require(slider.landmarks() == fresh.content.landmarks, "the landmarks of " + name);
    require(field.placeholderString() == (usable ? "" : "––"), "the placeholder of " + name);
    auto const units = std::ceil(range[2] - range[0]);
    auto const digits = units < 2 ? 3 : units < 10 ? 1 : 0;
    require(field.formatter()->maximumFractionDigits() == digits, "the digits of " + name);
    require(field.formatter()->minimum() == range[0] && field.formatter()->maximum() == range[2],
        "the limits of " + name);
    std::vector<double> steps;
    if (usable) {
        steps = *fresh.content.landmarks;
        steps.insert(std::ranges::lower_bound(steps, range[1]), range[1]);
        steps.erase(std::ranges::unique(steps).begin(), steps.end());
    }
    require(row.stepPositions() == steps, "the steps of " + name);
    require(shown.isTouched || slider.doubleValue() == std::clamp(position, range[0], range[2]),
        "the knob of " + name);
    require(shown.isTyped || (usable ? field.doubleValue() == position : field.stringValue().empty()),
        "the number of " + name);
}
