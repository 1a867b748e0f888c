#pragma once

#include "Platform/AppKit/NSNib.h"
#include "Platform/AppKit/NSScrollView.h"
#include "Platform/AppKit/NSView.h"

#include <cstdint>
#include <optional>

class NSTableView;

/// Every operation is optional, and none is called yet.
class NSTableViewDelegate {
public:
    virtual ~NSTableViewDelegate() = default;
};

/// How rows come and go, as bits; none: at once.
enum class NSTableViewAnimationOptions : unsigned { none = 0, effectFade = 1 };

/// One row as its data source names it: a token that stays with the row while it moves.
struct NSTableRow {
    std::uint64_t token { 0 };
    bool isGroupRow { false }; ///< A section header.
    bool operator==(NSTableRow const&) const = default;
};

/// A list of rows of one column, with section headers, that has views only for the rows that
/// can be seen and a margin around them. Views go back for reuse when their rows scroll away; a
/// row that holds the focus or a pressed mouse button keeps its view.
class PLATFORM_API NSTableView final : public NSView {
public:
    NSTableView();
    ~NSTableView() override;

    void setDelegate(std::weak_ptr<NSTableViewDelegate> delegate) { m_delegate = std::move(delegate); }
    std::shared_ptr<NSTableViewDelegate> delegate() const { return m_delegate.lock(); }

    void registerNib(std::shared_ptr<NSNib> const& nib, std::string identifier);
    /// A view for reuse, after `prepareForReuse`, or a new one from the interface registered for the
    /// identifier; null when none is registered. Without an owner the view owns its outlets.
    std::shared_ptr<NSView> makeViewWithIdentifier(
        std::string_view identifier, std::shared_ptr<NSObject> const& owner);

    std::size_t numberOfRows() const;
    void scrollRowToVisible(std::size_t row);
    /// The view of a row, null when the row has none and is not to get one, or is out of range.
    std::shared_ptr<NSView> viewAtColumnRow(std::size_t column, std::size_t row, bool makeIfNecessary);
    std::shared_ptr<NSScrollView> enclosingScrollView() const { return m_scrollView; }
    void layoutSubtreeIfNeeded() override;

    /// Of the data source. The provider makes the view of a row on demand; its data source may be gone.
    using RowViewProvider = std::function<std::shared_ptr<NSView>(std::size_t row)>;
    void setRowViewProvider(RowViewProvider provider);
    /// Brings the rows from what they are to these by removals, insertions and moves; views of rows
    /// that stay are not touched. Returns how many of each it took.
    struct Changes {
        std::size_t removed { 0 };
        std::size_t inserted { 0 };
        std::size_t moved { 0 };
        bool operator==(Changes const&) const = default;
    };
    Changes setRows(std::vector<NSTableRow> rows);
    std::vector<NSTableRow> const& rows() const;

private:
    friend class NSClipView;
    friend class NSScrollView;
    std::weak_ptr<NSTableViewDelegate> m_delegate;
    std::shared_ptr<NSScrollView> m_scrollView;
};
