#include "Moravel/SidebarViewController.h"

#include "Moravel/AxisCellView.h"
#include "Moravel/MoravelBundle.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"
#include "Typloom/TyploomKit/TLCallbackHandler.h"
#include "Typloom/TyploomKit/legacyMainActorIsolated.h"

#include <array>

static constexpr char const* axisRowIdentifier = "Axis";
static constexpr char const* tabSymbolName = "slider.horizontal.below.rectangle";

std::string const& SidebarViewController::tabTitle()
{
    NSAssertMainThread();
    static std::string const title = MoravelLocalizedString("Variation", "Variation", "Sidebar title");
    return title;
}

static std::shared_ptr<NSImage> makeTabBarImage()
{
    auto const symbol = NSImage::imageWithSystemSymbolName(tabSymbolName);
    auto const image
        = symbol ? symbol->imageWithSymbolConfiguration({ .scale = NSImageSymbolScale::large }) : nullptr;
    if (!image) {
        NSFatalError(
            "SidebarViewController: the system symbol 'slider.horizontal.below.rectangle' is missing");
    }
    return image;
}

std::shared_ptr<NSImage> const& SidebarViewController::tabBarImage()
{
    NSAssertMainThread();
    static std::shared_ptr<NSImage> const image = makeTabBarImage();
    return image;
}

TLEditViewSidebarControllerClass SidebarViewController::dynamicClass() const
{
    auto const make = [] {
        auto const controller = std::make_shared<SidebarViewController>();
        controller->init();
        return controller;
    };
    return { .name = "SidebarViewController", .make = make, .title = tabTitle, .tabBarImage = tabBarImage };
}

SidebarViewController::~SidebarViewController()
{
    if (m_hasRegisteredObservers) {
        m_hasRegisteredObservers = false;
        NSNotificationCenter::defaultCenter().removeObserver(this);
    }
}

void SidebarViewController::init()
{
    initWithNibName("SidebarViewController", MoravelBundle());
}

void SidebarViewController::initWithNibName(
    std::optional<std::string> nibName, std::shared_ptr<NSBundle> bundle)
{
    NSAssertMainThread();
    NSViewController::initWithNibName(std::move(nibName), std::move(bundle));
    setTitle(tabTitle());
}

bool SidebarViewController::initWithCoder(NSCoder const& coder)
{
    NSAssertMainThread();
    if (!NSViewController::initWithCoder(coder)) {
        return false;
    }
    setTitle(tabTitle());
    return true;
}

std::span<NSOutlet const> SidebarViewController::outlets() const
{
    static std::array const outlets {
        NSOutletMake("tableView", &SidebarViewController::m_tableView),
        NSOutletMake("addButton", &SidebarViewController::m_addButton),
        NSOutletMake("filterField", &SidebarViewController::m_filterField),
        NSOutletMake(
            "placeholderView", &SidebarViewController::m_placeholderView, NSOutletPresence::optional),
    };
    return outlets;
}

std::span<NSMethod const> SidebarViewController::methods() const
{
    static std::array const methods {
        NSMethodMake("didUpdateInterface:", &SidebarViewController::didUpdateInterface),
        NSMethodMake("controlTextDidChange:", &SidebarViewController::controlTextDidChange),
        NSMethodMake("addGlyphAxis:", &SidebarViewController::addGlyphAxis),
        NSMethodMake("popoverWillClose:", &SidebarViewController::popoverWillClose),
        NSMethodMake("popoverDidClose:", &SidebarViewController::popoverDidClose),
    };
    return methods;
}

void SidebarViewController::loadPlugin()
{
    NSAssertMainThread();
    TLCallbackHandler::addEditViewLeftSidebarController(dynamicClass());
}

void SidebarViewController::awakeFromNib()
{
    NSViewController::awakeFromNib();
    legacyMainActorIsolated([self = sharedAs<SidebarViewController>()] { self->setUpViews(); });
}

/// Runs each time the interface has been loaded.
void SidebarViewController::setUpViews()
{
    auto const self = sharedAs<SidebarViewController>();
    auto const table = requiredTableView();
    table->setDelegate(self);
    table->registerNib(std::make_shared<NSNib>("AxisCellView", MoravelBundle()), axisRowIdentifier);
    requiredFilterField()->setDelegate(self);
    requiredAddButton()->setToolTip(MoravelLocalizedString("add-glyph-axis.button.title", "Add Glyph Axis",
        "Tooltip for the button that adds a variation axis to a glyph"));
    updatePlaceholderTexts(false);
    if (!m_hasRegisteredObservers) {
        NSNotificationCenter::defaultCenter().addObserver(self, "didUpdateInterface:", TLUpdateInterface);
        m_hasRegisteredObservers = true;
    }
}

void SidebarViewController::viewDidLoad()
{
    NSAssertMainThread();
    NSViewController::viewDidLoad();
    std::weak_ptr<SidebarViewController> const weakSelf = sharedAs<SidebarViewController>();
    m_dataSource = std::make_shared<DataSource>(requiredTableView(),
        [weakSelf](auto const& table, std::size_t, std::size_t, SidebarItem const& item) {
            NSAssertMainThread();
            auto const self = weakSelf.lock();
            return self ? self->makeCellView(*table, item) : std::make_shared<NSView>();
        });
    m_dataSource->setSectionHeaderViewProvider([weakSelf](auto const&, std::size_t, Section section) {
        NSAssertMainThread();
        auto const self = weakSelf.lock();
        return self ? self->makeSectionHeaderView(section) : std::make_shared<NSView>();
    });
}

std::shared_ptr<NSView> SidebarViewController::makeCellView(NSTableView& table, SidebarItem const& item)
{
    auto const row
        = std::dynamic_pointer_cast<AxisCellView>(table.makeViewWithIdentifier(axisRowIdentifier, nullptr));
    if (!row) {
        NSFatalError("SidebarViewController: the interface registered for 'Axis' is no AxisCellView");
    }
    row->setItem(item);
    row->setTableState(m_tableState);
    row->setDelegate(sharedAs<SidebarViewController>());
    row->observeTableState();
    row->reloadRowContent();
    row->updateEditingHighlight();
    return row;
}

std::shared_ptr<NSView> SidebarViewController::makeSectionHeaderView(Section section) const
{
    switch (section) {
    case Section::font:
        return NSTextField::labelWithString(MoravelLocalizedString(
            "Font Axes", "Font Axes", "Heading for a list of axes belonging to a font"));
    case Section::glyph:
        return NSTextField::labelWithString(MoravelLocalizedString(
            "Glyph Axes", "Glyph Axes", "Heading for a list of axes specific to a glyph"));
    }
    return std::make_shared<NSView>();
}
