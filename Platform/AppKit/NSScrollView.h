#pragma once

#include "Platform/AppKit/NSGeometry.h"
#include "Platform/Foundation/NSObject.h"

class NSTableView;

/// The part of a scroll view through which its document is seen.
class PLATFORM_API NSClipView final : public NSObject {
public:
    explicit NSClipView(NSTableView& table)
        : m_table(&table)
    {
    }
    NSRect bounds() const; ///< In the document's coordinates.
    NSEdgeInsets contentInsets() const;
    void setContentInsets(NSEdgeInsets insets);
    /// Puts that point of the document into the corner. What lies beyond the ends is brought back.
    void scrollToPoint(NSPoint point);

private:
    friend class NSTableView;
    NSTableView* m_table; ///< Null after the table's end.
    NSEdgeInsets m_insets;
};

/// A view that shows a part of a larger one. Here: always around a table.
class PLATFORM_API NSScrollView final : public NSObject {
public:
    explicit NSScrollView(NSTableView& table)
        : m_contentView(std::make_shared<NSClipView>(table))
    {
    }
    std::shared_ptr<NSClipView> const& contentView() const { return m_contentView; }
    /// The scrollers follow where the clip view stands.
    void reflectScrolledClipView(std::shared_ptr<NSClipView> const& clipView);

private:
    std::shared_ptr<NSClipView> m_contentView;
};
