#include "Platform/AppKit/NSTableView.h"

#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/NSTableViewBacking.h"

static NSTableViewBacking& tableBacking(NSTableView const& table)
{
    return static_cast<NSTableViewBacking&>(table.backing());
}

NSTableView::NSTableView()
    : NSView(std::make_unique<NSTableViewBacking>())
    , m_scrollView(std::make_shared<NSScrollView>(*this))
{
}

NSTableView::~NSTableView()
{
    // Whoever still holds the scroll view finds nothing in it.
    m_scrollView->contentView()->m_table = nullptr;
}

void NSTableView::registerNib(std::shared_ptr<NSNib> const& nib, std::string identifier)
{
    NSAssertMainThread();
    tableBacking(*this).pool.registerNib(nib, std::move(identifier));
}

std::shared_ptr<NSView> NSTableView::makeViewWithIdentifier(
    std::string_view identifier, std::shared_ptr<NSObject> const& owner)
{
    NSAssertMainThread();
    return tableBacking(*this).pool.make(identifier, owner);
}

std::size_t NSTableView::numberOfRows() const
{
    return rows().size();
}

void NSTableView::scrollRowToVisible(std::size_t row)
{
    NSAssertMainThread();
    tableBacking(*this).scrollRowToVisible(row);
}

std::shared_ptr<NSView> NSTableView::viewAtColumnRow(
    std::size_t column, std::size_t row, bool makeIfNecessary)
{
    NSAssertMainThread();
    return column == 0 ? tableBacking(*this).viewOfRow(row, makeIfNecessary) : nullptr;
}

void NSTableView::layoutSubtreeIfNeeded()
{
    tableBacking(*this).tile();
    NSView::layoutSubtreeIfNeeded();
}

void NSTableView::setRowViewProvider(RowViewProvider provider)
{
    NSAssertMainThread();
    tableBacking(*this).provider = std::move(provider);
}

NSTableView::Changes NSTableView::setRows(std::vector<NSTableRow> rows)
{
    NSAssertMainThread();
    auto const keep = weak_from_this().lock();
    return tableBacking(*this).setRows(std::move(rows));
}

std::vector<NSTableRow> const& NSTableView::rows() const
{
    return tableBacking(*this).rows;
}
