#include "Platform/AppKit/NSViewController.h"

#include "Platform/Foundation/NSMainThread.h"

void NSViewController::init()
{
    initWithNibName({}, nullptr);
}

void NSViewController::initWithNibName(std::optional<std::string> nibName, std::shared_ptr<NSBundle> bundle)
{
    NSAssertMainThread();
    m_nibName = std::move(nibName);
    m_bundle = std::move(bundle);
}

bool NSViewController::initWithCoder(NSCoder const& coder)
{
    NSAssertMainThread();
    if (coder.failed()) {
        return false;
    }
    m_nibName = coder.decodeString("NSNibName");
    auto const bundleIdentifier = coder.decodeString("NSBundleIdentifier");
    m_bundle = bundleIdentifier ? NSBundle::bundleWithIdentifier(*bundleIdentifier) : nullptr;
    m_title = coder.decodeString("NSTitle").value_or("");
    return true;
}

std::shared_ptr<NSView> NSViewController::view()
{
    NSAssertMainThread();
    if (!m_view) {
        loadView();
        if (!m_view) {
            m_view = std::make_shared<NSView>();
        }
        viewDidLoad();
    }
    return m_view;
}

void NSViewController::loadView()
{
    NSAssertMainThread();
    if (!m_nibName) {
        m_view = std::make_shared<NSView>();
        return;
    }
    NSNib const nib(*m_nibName, m_bundle ? m_bundle : NSBundle::mainBundle());
    m_view = nib.instantiateOrStop(sharedAs<NSObject>());
}
