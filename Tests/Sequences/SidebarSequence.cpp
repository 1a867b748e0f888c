#include "Tests/Sequences/SidebarSequence.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/AppKit/NSPopover.h"
#include "Platform/Foundation/NSMainQueue.h"
#include "Tests/Support/RowBuilder.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <array>

std::ostream& operator<<(std::ostream& out, Step const& step)
{
    return out << SidebarSequence::deeds()[step.deed].name << " (" << step.which << ", " << step.value << ")";
}

/// Posts another update from inside the first signal that comes.
class NestedUpdate final : public NSObject {
public:
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods { NSMethodMake("rowDidChange:", &NestedUpdate::rowDidChange) };
        return methods;
    }
    void rowDidChange(std::shared_ptr<NSNotification> const&)
    {
        NSNotificationCenter::defaultCenter().removeObserver(this);
        NSNotificationCenter::defaultCenter().post(TLUpdateInterface);
    }
};

template <void (SidebarSequence::*Act)(unsigned, unsigned)>
SidebarSequence::Deed SidebarSequence::deed(char const* name, unsigned weight)
{
    return { name,
        [](SidebarSequence& sequence, unsigned which, unsigned value) { (sequence.*Act)(which, value); },
        weight };
}

std::vector<SidebarSequence::Deed> const& SidebarSequence::deeds()
{
    static std::vector<Deed> const all = [] {
        std::vector<Deed> list {
            deed<&SidebarSequence::update>("update", 22),
            deed<&SidebarSequence::appear>("appear", 5),
            deed<&SidebarSequence::nestUpdate>("nest an update", 3),
            deed<&SidebarSequence::runQueue>("run the queue", 8),
            deed<&SidebarSequence::settleAll>("settle", 5),
            deed<&SidebarSequence::filter>("filter", 5),
            deed<&SidebarSequence::showTab>("show or hide the tab", 2),
            deed<&SidebarSequence::resize>("resize", 2),
            deed<&SidebarSequence::scroll>("scroll", 3),
            deed<&SidebarSequence::openEditor>("open editor", 5),
            deed<&SidebarSequence::addAxis>("add axis", 4),
            deed<&SidebarSequence::typeName>("type name", 5),
            deed<&SidebarSequence::endEditor>("end editor", 5),
            deed<&SidebarSequence::chooseValue>("choose value", 8),
            deed<&SidebarSequence::step>("step", 4),
            deed<&SidebarSequence::drag>("press, move or release", 6),
            deed<&SidebarSequence::typeValue>("type value", 5),
            deed<&SidebarSequence::chooseReflow>("choose reflow", 4),
            deed<&SidebarSequence::callBack>("call back", 5),
            deed<&SidebarSequence::releaseHost>("release or give the host", 1),
            deed<&SidebarSequence::renewSidebar>("renew sidebar", 1),
            deed<&SidebarSequence::showSecond>("make or release a second sidebar", 1),
        };
        for (auto const& [name, change, weight] : FamilyChanges::all()) {
            auto const act = [change = change](SidebarSequence& sequence, unsigned which, unsigned value) {
                sequence.changeFamily(change, which, value);
            };
            list.push_back({ name, act, weight });
        }
        return list;
    }();
    return all;
}

SidebarSequence::SidebarSequence()
{
    RowBuilder::openBundle();
    NSSetBeepHandler([] {});
    makeSidebar();
}

SidebarSequence::~SidebarSequence()
{
    NSApplication::closeTransientPopovers();
    m_table.reset();
    m_sidebar.reset();
    m_window.reset();
    m_family.closeFamily(0, 0);
    settle();
    NSSetBeepHandler({});
}

void SidebarSequence::makeSidebar()
{
    m_sidebar = std::make_shared<SidebarViewController>();
    m_sidebar->init();
    m_sidebar->setController(m_host);
    m_window = std::make_unique<ViewWindow>(m_sidebar->view(), QSize(280, m_isTall ? 1000 : 250));
    m_isShown = true;
    m_table = std::make_unique<ShownTable>(m_sidebar, m_host);
    m_sidebar->viewDidAppear();
    settle();
}

/// As many turns as the longest chain of deferred calls has links, and one.
void SidebarSequence::settle()
{
    for (int turn = 0; turn < 6; ++turn) {
        NSMainQueue::runPending();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void SidebarSequence::perform(Step const& step)
{
    m_table->begin(m_isTall && m_isShown);
    if (m_secondTable) {
        m_secondTable->begin(false);
    }
    deeds()[step.deed].act(*this, step.which, step.value);
    m_table->requireConsistent();
    if (m_secondTable) {
        m_secondTable->requireConsistent();
    }
}

void SidebarSequence::finish()
{
    m_table->begin(false);
    m_host->pending.clear();
    settle();
    m_sidebar->setController(m_host);
    NSNotificationCenter::defaultCenter().post(TLUpdateInterface);
    m_table->requireFresh();
    m_table->forget();
    for (auto const& font : m_closed) {
        require(font.expired(), "a closed family is still held");
    }
}

/// The host says nothing before the next turn.
void SidebarSequence::changeFamily(FamilyChanges::Change change, unsigned which, unsigned value)
{
    std::shared_ptr<TLFont> const before = m_host->window->documentFont();
    (m_family.*change)(which, value);
    if (before != m_host->window->documentFont()) {
        m_closed.push_back(before);
    }
    m_table->requireQuiet();
}

void SidebarSequence::update(unsigned, unsigned)
{
    NSNotificationCenter::defaultCenter().post(TLUpdateInterface);
    m_table->requireRefreshed(std::nullopt);
    m_table->requireScrolledForLayer();
    if (m_secondTable) {
        m_secondTable->requireFresh();
    }
}

void SidebarSequence::appear(unsigned, unsigned)
{
    m_sidebar->viewDidAppear();
    m_table->requireRefreshed(std::nullopt);
}

void SidebarSequence::nestUpdate(unsigned, unsigned)
{
    m_nesting = std::make_shared<NestedUpdate>();
    NSNotificationCenter::defaultCenter().addObserver(
        m_nesting, "rowDidChange:", moravelRowContentDidChange, m_sidebar->tableState());
    NSNotificationCenter::defaultCenter().post(TLUpdateInterface);
    m_nesting.reset();
    m_table->requireFresh();
}

void SidebarSequence::runQueue(unsigned, unsigned)
{
    NSMainQueue::runPending();
}

/// However many changes wait, the host's own update brings them all.
void SidebarSequence::settleAll(unsigned, unsigned)
{
    settle();
    m_table->requireFresh();
}

void SidebarSequence::filter(unsigned which, unsigned)
{
    static constexpr std::array texts { "", " WEI", "ar", "w", " ", "tag1", "none such\t" };
    static constexpr std::array queries { "", "WEI", "ar", "w", "", "tag1", "none such" };
    auto const index = which % texts.size();
    m_sidebar->filterField()->setStringValue(texts[index]);
    m_sidebar->controlTextDidChange(
        std::make_shared<NSNotification>("NSControlTextDidChangeNotification", m_sidebar->filterField()));
    require(m_sidebar->filterQuery() == queries[index], "the filter's text is trimmed");
    m_table->requireRefreshed(std::nullopt);
    require(m_table->scrollPosition() == 0, "the filter scrolls to the top");
}

void SidebarSequence::showTab(unsigned, unsigned)
{
    m_isShown = !m_isShown;
    qtWidget(*m_sidebar->view())->setVisible(m_isShown);
    settle();
    require(m_isShown || !m_sidebar->editGlyphAxisPopover(), "an editor outlives its tab");
}

void SidebarSequence::resize(unsigned, unsigned)
{
    m_isTall = !m_isTall;
    m_window->widget().resize(280, m_isTall ? 1000 : 250);
    settle();
}

void SidebarSequence::scroll(unsigned which, unsigned)
{
    auto const table = m_sidebar->tableView();
    if (table->numberOfRows() > 0) {
        table->scrollRowToVisible(which % table->numberOfRows());
        table->layoutSubtreeIfNeeded();
    }
}

std::shared_ptr<AxisCellView> SidebarSequence::row(unsigned which) const
{
    auto const rows = m_table->rows();
    return rows.empty() ? nullptr : rows[which % rows.size()];
}

void SidebarSequence::openEditor(unsigned which, unsigned)
{
    if (auto const anchor = row(which)) {
        auto const isOfGlyph = anchor->item()->section == Section::glyph;
        auto const before = m_sidebar->editGlyphAxisPopover();
        m_sidebar->axisCellViewDidRequestAxisEditor(anchor);
        require(
            isOfGlyph || m_sidebar->editGlyphAxisPopover() == before, "an axis of the font is not edited");
    }
}

void SidebarSequence::addAxis(unsigned, unsigned)
{
    auto const glyph = m_sidebar->currentGlyph();
    auto const before = glyph ? glyph->axes() : std::vector<std::shared_ptr<TLAxis>> {};
    if (before.size() > 5) {
        return;
    }
    m_sidebar->addGlyphAxis(nullptr);
    if (!glyph) {
        m_table->requireQuiet();
        return;
    }
    require(glyph->countOfAxes() == before.size() + 1 && glyph->axes().back()->name() == "Unnamed",
        "the new axis");
    m_table->requireRefreshed(std::nullopt);
}

WindowEvents SidebarSequence::editorWindow() const
{
    return WindowEvents(
        *qtWidget(*m_sidebar->editGlyphAxisPopover()->contentViewController()->view())->window());
}

void SidebarSequence::typeName(unsigned which, unsigned)
{
    static constexpr std::array texts { "x", "Bar", " ", "W" };
    settle(); // What waits may open another editor in the place of this one.
    if (m_sidebar->editGlyphAxisPopover()) {
        editorWindow().type(texts[which % texts.size()]);
    }
}

void SidebarSequence::endEditor(unsigned which, unsigned)
{
    settle();
    if (!m_sidebar->editGlyphAxisPopover()) {
        return;
    }
    switch (which % 4) {
    case 0:
        return editorWindow().pressKey(Qt::Key_Return);
    case 1:
        return editorWindow().pressKey(Qt::Key_Escape);
    case 2:
        return m_sidebar->editGlyphAxisPopover()->close();
    default:
        return NSApplication::closeTransientPopovers();
    }
}

void SidebarSequence::chooseValue(unsigned which, unsigned value)
{
    if (auto const changed = row(which); changed && changed->slider()->isEnabled()) {
        m_table->touched(*changed);
        changed->slider()->performChange(m_family.number(value));
    }
}

void SidebarSequence::step(unsigned which, unsigned value)
{
    if (auto const stepped = row(which)) {
        m_table->touched(*stepped);
        value % 2 == 0 ? stepped->stepUp(nullptr) : stepped->stepDown(nullptr);
    }
}

void SidebarSequence::drag(unsigned which, unsigned value)
{
    auto const dragged = row(which);
    if (!dragged || !m_isShown || NSPopover::shownPopovers().size() > 0) {
        return;
    }
    auto const place = value % 10 / 10.0;
    m_table->touched(*dragged);
    if (std::exchange(m_isPressed, false)) {
        m_window->release(*m_sidebar->view(), place); // Its row may have gone.
    } else if (dragged->slider()->isEnabled()) {
        m_window->press(*dragged->slider(), place);
        m_isPressed = true;
    }
}

void SidebarSequence::typeValue(unsigned which, unsigned value)
{
    auto const edited = row(which);
    if (!edited || !m_isShown || !edited->valueField()->isEnabled() || m_isPressed) {
        return;
    }
    for (auto const& other : m_table->rows()) {
        m_table->touched(*other); // The one that is left too.
    }
    edited->valueField()->selectText();
    m_window->type(std::to_string(value % 1000));
    if (value % 3 == 0) {
        m_window->pressKey(Qt::Key_Return);
    }
}

void SidebarSequence::chooseReflow(unsigned which, unsigned)
{
    static constexpr std::array times { Reflow::atOnce, Reflow::later, Reflow::twice, Reflow::never };
    m_host->reflow = times[which % times.size()];
}

/// Late, in any order, and perhaps once more; or never.
void SidebarSequence::callBack(unsigned which, unsigned value)
{
    if (m_host->pending.empty()) {
        return;
    }
    auto const index = static_cast<std::ptrdiff_t>(which % m_host->pending.size());
    auto const callback = m_host->pending[static_cast<std::size_t>(index)];
    if (value % 3 != 0) {
        callback(nullptr);
    }
    if (value % 3 != 1) {
        m_host->pending.erase(m_host->pending.begin() + index);
    }
}

void SidebarSequence::releaseHost(unsigned, unsigned)
{
    m_sidebar->setController(m_sidebar->controller() ? nullptr : m_host);
    NSNotificationCenter::defaultCenter().post(TLUpdateInterface);
    m_table->requireFresh();
}

/// The old one goes with all that waits for it.
void SidebarSequence::renewSidebar(unsigned, unsigned)
{
    std::weak_ptr<SidebarViewController> const released = m_sidebar;
    std::weak_ptr<TableState> const state = m_sidebar->tableState();
    m_isPressed = false;
    m_table.reset();
    m_sidebar.reset();
    m_window.reset();
    m_host->pending.clear();
    settle();
    require(released.expired() && state.expired(), "the sidebar is still held");
    makeSidebar();
    m_table->begin(false);
    m_table->requireFresh();
}

void SidebarSequence::showSecond(unsigned, unsigned)
{
    m_secondTable.reset();
    if (std::exchange(m_second, nullptr)) {
        return;
    }
    m_second = std::make_shared<SidebarViewController>();
    m_second->init();
    m_second->setController(m_host);
    (void)m_second->view();
    m_secondTable = std::make_unique<ShownTable>(m_second, m_host);
    m_second->viewDidAppear();
    m_secondTable->requireFresh();
}
