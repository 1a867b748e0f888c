// A tab of the sidebar that tells the edited glyph's name, its advance and the number of its nodes.
#include <Platform/AppKit/NSViewController.h>
#include <Platform/Foundation/NSBundle.h>
#include <Platform/Foundation/NSNotificationCenter.h>
#include <Platform/Foundation/NSNumberFormatter.h>
#include <Typloom/TyploomCore/TLGlyph.h>
#include <Typloom/TyploomCore/TLLayer.h>
#include <Typloom/TyploomCore/TLUpdateInterface.h>
#include <Typloom/TyploomKit/TLCallbackHandler.h>
#include <Typloom/TyploomKit/TLPlaceholderView.h>
#include <Typloom/TyploomKit/TyploomPlugin.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {
std::string localized(std::string_view key, std::string_view english)
{
    return NSLocalizedString(key, NSBundle::bundleWithIdentifier("GlyphFacts"), english, "");
}

std::size_t countOfNodes(TLOutline const& outline)
{
    std::size_t count = 0;
    for (auto const& contour : outline.contours) {
        count += static_cast<std::size_t>(std::ranges::count_if(
            contour.points, [](TLPoint const& point) { return point.type != TLPointType::offcurve; }));
    }
    return count;
}

/// One for each sidebar.
class FactsController final : public NSViewController, public TLEditViewSidebarControllerProtocol {
public:
    ~FactsController() override { NSNotificationCenter::defaultCenter().removeObserver(this); }

    std::shared_ptr<NSView> view() override { return NSViewController::view(); }
    void setController(std::weak_ptr<TLGlyphViewControllerProtocol> controller) override
    {
        m_controller = std::move(controller);
    }

    void loadView() override
    {
        m_facts = std::make_shared<TLPlaceholderView>();
        setView(m_facts);
    }
    void viewDidLoad() override
    {
        NSNotificationCenter::defaultCenter().addObserver(
            sharedAs<FactsController>(), "didUpdateInterface:", TLUpdateInterface);
        update();
    }
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods { NSMethodMake(
            "didUpdateInterface:", &FactsController::didUpdateInterface) };
        return methods;
    }

private:
    void didUpdateInterface(std::shared_ptr<NSNotification> const&) { update(); }

    void update()
    {
        auto const controller = m_controller.lock();
        auto const layer = controller ? controller->activeLayer() : nullptr;
        auto const glyph = layer ? layer->glyph() : nullptr;
        if (!glyph) {
            m_facts->setTitle(localized("glyph-facts.none.title", "No Glyph"));
            m_facts->setBody(localized("glyph-facts.none.body", "Put the cursor on a glyph."));
            return;
        }
        auto const& outline = layer->outline();
        m_facts->setTitle(glyph->name());
        m_facts->setBody(localized("glyph-facts.advance", "Advance") + " "
            + NSNumberDescription(outline.advance) + ", " + localized("glyph-facts.nodes", "Nodes") + " "
            + std::to_string(countOfNodes(outline)));
    }

    std::weak_ptr<TLGlyphViewControllerProtocol> m_controller;
    std::shared_ptr<TLPlaceholderView> m_facts;
};

/// Made once; registers the tab.
class GlyphFacts final : public TyploomPlugin {
public:
    unsigned interfaceVersion() const override { return 1; }
    void loadPlugin() override
    {
        auto const make = [] {
            auto const controller = std::make_shared<FactsController>();
            controller->init();
            return controller;
        };
        auto const title = [] { return localized("glyph-facts.title", "Glyph"); };
        TLCallbackHandler::addEditViewLeftSidebarController(
            { .name = "FactsController", .make = make, .title = title, .tabBarImage = nullptr });
    }
};
} // namespace

extern "C" __attribute__((visibility("default"))) void TyploomPluginEntry(
    char const* className, std::shared_ptr<TyploomPlugin>* result)
{
    if (std::string_view(className) == "GlyphFacts") {
        *result = std::make_shared<GlyphFacts>();
    }
}
