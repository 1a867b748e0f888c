#pragma once

#include "Platform/AppKit/NSEvent.h"
#include "Platform/AppKit/NSLayoutConstraint.h"
#include "Platform/AppKit/NSTrackingArea.h"
#include "Platform/Foundation/NSCoder.h"

#include <vector>

struct NSViewBacking;
class NSScrollView;

/// A rectangle of the window that draws, takes events and holds other views. A view owns its
/// subviews; its superview is only referred to. Frames are in the superview's coordinates.
class PLATFORM_API NSView : public NSObject {
public:
    NSView();
    ~NSView() override;

    virtual void initWithFrame(NSRect frame);
    /// False when the coder yields no object.
    virtual bool initWithCoder(NSCoder const& coder);
    /// Sent to a row view before the table hands it out again.
    virtual void prepareForReuse() { }

    std::shared_ptr<NSView> superview() const;
    std::vector<std::shared_ptr<NSView>> const& subviews() const;
    void addSubview(std::shared_ptr<NSView> const& view);
    void removeFromSuperview();
    /// The first view of that identifier among this view's descendants, null when there is none.
    std::shared_ptr<NSView> descendantWithIdentifier(std::string_view identifier) const;

    /// The name that the interface description gives the view.
    std::string const& identifier() const;
    void setIdentifier(std::string identifier);

    NSRect frame() const;
    void setFrame(NSRect frame);
    NSRect bounds() const { return { {}, frame().size }; }
    /// The part of `bounds` that no superview clips away; empty when the view is not shown.
    NSRect visibleRect() const;

    /// Settled once per event: hiding and showing again while one event is handled changes nothing.
    bool isHidden() const;
    virtual void setHidden(bool hidden);
    void setNeedsDisplay(bool needed);
    virtual void drawRect(NSRect dirty);

    std::string toolTip() const;
    void setToolTip(std::string text);
    std::string accessibilityLabel() const;
    void setAccessibilityLabel(std::string text);

    /// Lays out this view and all below it, now.
    virtual void layoutSubtreeIfNeeded();
    /// The size that the view wants for its content and its constraints.
    virtual NSSize fittingSize() const;
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);
    void setContentHuggingPriority(int priority, NSLayoutOrientation orientation);
    void setContentCompressionResistancePriority(int priority, NSLayoutOrientation orientation);
    NSLayoutAnchor leadingAnchor();
    NSLayoutAnchor trailingAnchor();
    NSLayoutAnchor topAnchor();
    NSLayoutAnchor bottomAnchor();
    NSLayoutAnchor widthAnchor();
    NSLayoutAnchor centerYAnchor();

    virtual void updateTrackingAreas();
    void addTrackingArea(std::shared_ptr<NSTrackingArea> const& area);
    void removeTrackingArea(std::shared_ptr<NSTrackingArea> const& area);
    std::vector<std::shared_ptr<NSTrackingArea>> const& trackingAreas() const;

    /// Events. The base class passes each on to the superview.
    virtual void mouseDown(NSEvent const& event);
    virtual void mouseDragged(NSEvent const& event);
    virtual void mouseUp(NSEvent const& event);
    virtual void mouseMoved(NSEvent const& event);
    virtual void rightMouseDown(NSEvent const& event);
    virtual void scrollWheel(NSEvent const& event);
    virtual void keyDown(NSEvent const& event);
    /// Of this view's tracking areas. The base class does nothing.
    virtual void mouseEntered(NSEvent const& event);
    virtual void mouseExited(NSEvent const& event);
    /// Whether the view takes the keyboard: by Tab, and by a click only if `byMouse`.
    void setAcceptsFirstResponder(bool byTab, bool byMouse);
    bool isFirstResponder() const;
    virtual void didChangeFirstResponder() { }

    /// Private to the platform: the toolkit's side of the view.
    NSViewBacking& backing() const { return *m_backing; }

protected:
    explicit NSView(std::unique_ptr<NSViewBacking> backing);

private:
    std::unique_ptr<NSViewBacking> m_backing;
};
