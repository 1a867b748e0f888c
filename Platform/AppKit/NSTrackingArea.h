#pragma once

#include "Platform/AppKit/NSGeometry.h"
#include "Platform/Foundation/NSObject.h"

class NSView;

/// Bits of what a tracking area reports and when.
enum NSTrackingAreaOptions : unsigned {
    NSTrackingMouseEnteredAndExited = 0x01,
    NSTrackingActiveAlways = 0x80,
    NSTrackingInVisibleRect = 0x200,
};

/// A part of a view whose owner is told when the pointer enters and leaves it, in inactive windows
/// too, and when the view moves under a still pointer.
class PLATFORM_API NSTrackingArea final : public NSObject {
public:
    /// With `NSTrackingInVisibleRect` the rectangle is not looked at: the area is the view's visible part.
    NSTrackingArea(NSRect rect, unsigned options, std::weak_ptr<NSView> owner)
        : m_rect(rect)
        , m_options(options)
        , m_owner(std::move(owner))
    {
    }

    NSRect rect() const { return m_rect; }
    unsigned options() const { return m_options; }
    std::shared_ptr<NSView> owner() const { return m_owner.lock(); }

    bool isMouseInside { false }; ///< Kept by the platform.

private:
    NSRect m_rect;
    unsigned m_options;
    std::weak_ptr<NSView> m_owner;
};
