#pragma once

#include "Moravel/TableState.h"
#include "Moravel/VariationAxisCellViewDelegate.h"
#include "Platform/AppKit/NSButton.h"
#include "Platform/AppKit/NSPopover.h"
#include "Platform/AppKit/NSSearchField.h"
#include "Platform/AppKit/NSTableViewDiffableDataSource.h"
#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomCore/TLFont.h"
#include "Typloom/TyploomKit/TLEditViewSidebarControllerProtocol.h"
#include "Typloom/TyploomKit/TLPlaceholderView.h"
#include "Typloom/TyploomKit/TyploomPlugin.h"

class EditGlyphAxisViewController;

/// The principal class of the plug-in, and the tab "Variation" of an edit view's left sidebar: a row for
/// each axis that applies to what is being edited. Each refresh builds a model of the host's
/// state and shows it; a value chosen in a row moves the edit view.
class SidebarViewController : public NSViewController,
                              public NSNibOwner,
                              public TyploomPlugin,
                              public TLEditViewSidebarControllerProtocol,
                              public NSTableViewDelegate,
                              public NSPopoverDelegate,
                              public NSSearchFieldDelegate,
                              public VariationAxisCellViewDelegate {
public:
    /// The class as the host registers it, with the title and image of its tab.
    static std::string const& tabTitle();
    static std::shared_ptr<NSImage> const& tabBarImage();
    virtual TLEditViewSidebarControllerClass dynamicClass() const;

    ~SidebarViewController() override;
    void init() override;
    void initWithNibName(std::optional<std::string> nibName, std::shared_ptr<NSBundle> bundle) override;
    bool initWithCoder(NSCoder const& coder) override;
    std::span<NSMethod const> methods() const override;
    std::span<NSOutlet const> outlets() const override;

    unsigned interfaceVersion() const override { return 1; }
    void loadPlugin() override;

    std::shared_ptr<NSTableView> tableView() const;
    std::shared_ptr<NSButton> addButton() const;
    std::shared_ptr<NSSearchField> filterField() const;
    std::shared_ptr<TLPlaceholderView> placeholderView() const;
    void setTableView(std::weak_ptr<NSTableView> view);
    void setAddButton(std::weak_ptr<NSButton> button);
    void setFilterField(std::weak_ptr<NSSearchField> field);
    void setPlaceholderView(std::weak_ptr<TLPlaceholderView> view);
    std::shared_ptr<TLGlyphViewControllerProtocol> controller() const;
    void setController(std::weak_ptr<TLGlyphViewControllerProtocol> controller) override;

    using DataSource = NSTableViewDiffableDataSource<Section, SidebarItem>;
    std::shared_ptr<TableState> const& tableState() const { return m_tableState; }
    /// Null before `viewDidLoad`.
    std::shared_ptr<DataSource> const& dataSource() const { return m_dataSource; }
    std::string const& filterQuery() const { return m_filterQuery; }
    /// The editor that is open, null when none is.
    std::shared_ptr<NSPopover> const& editGlyphAxisPopover() const { return m_editGlyphAxisPopover; }
    /// The layer that the last model was built for; null when there was none.
    std::shared_ptr<TLLayer> activeLayer() const { return m_activeLayer.lock(); }

    std::shared_ptr<NSView> view() override { return NSViewController::view(); }
    void awakeFromNib() override;
    void viewDidLoad() override;
    void viewDidAppear() override;
    void didUpdateInterface(std::shared_ptr<NSNotification> const& notification);
    void controlTextDidChange(std::shared_ptr<NSNotification> const& notification) override;
    void addGlyphAxis(std::shared_ptr<NSObject> const& sender);
    /// Opens the editor beside the anchor, in the place of one for another axis. One that is open for this
    /// axis stays as it is.
    void showGlyphAxisEditor(std::shared_ptr<TLAxis> const& axis, SidebarItem const& item,
        std::shared_ptr<TLGlyph> const& glyph, std::shared_ptr<NSView> const& anchor);
    void popoverWillClose(std::shared_ptr<NSNotification> const& notification) override;
    void popoverDidClose(std::shared_ptr<NSNotification> const& notification) override;

    /// What the table should show now.
    MoravelTableModel makeTableModel();
    /// Shows a model; rows that stay keep their views. `refreshingAxis` (or null) is told to its row in any
    /// case. `completion` (or none) runs once, after the rows have been told.
    void applyTableModel(MoravelTableModel model, std::shared_ptr<TLAxis> const& refreshingAxis,
        std::function<void()> const& completion);
    /// The layer that the sidebar works on: for a preview the real layer of the current master. May be null.
    std::shared_ptr<TLLayer> currentActiveLayer() const;
    /// The glyph that the edit view shows, as the real font has it. May be null.
    std::shared_ptr<TLGlyph> currentGlyph() const;

    void axisCellViewDidChangeValue(std::shared_ptr<AxisCellView> const& row, double value) override;
    void axisCellViewDidRequestAxisEditor(std::shared_ptr<AxisCellView> const& row) override;

private:
    std::shared_ptr<NSTableView> requiredTableView() const;
    std::shared_ptr<NSButton> requiredAddButton() const;
    std::shared_ptr<NSSearchField> requiredFilterField() const;
    void setUpViews();
    std::shared_ptr<NSView> makeCellView(NSTableView& table, SidebarItem const& item);
    std::shared_ptr<NSView> makeSectionHeaderView(Section section) const;
    void updatePlaceholderTexts(bool filtering);
    void updateAccessories(bool isEmpty);
    void applySnapshot(SidebarSnapshot snapshot, std::function<void()> const& finish);
    void scrollToTop();
    void scrollToTopIfActiveLayerChanged(std::shared_ptr<TLLayer> const& previousLayer);

    std::shared_ptr<TLEditViewController> editViewController() const;
    std::shared_ptr<TLFont> fontOfModel(TLLayer const* layer) const;
    std::shared_ptr<TLFontMaster> currentMaster(TLFont const& font) const;
    std::optional<TLLocation> displayLocation() const;

    void applyAxisPosition(std::shared_ptr<AxisCellView> const& row, double value);
    struct AxisMove;
    void applyFontAxisPosition(std::shared_ptr<TLFont> const& font, AxisMove const& move);
    void applyLayerAxisPosition(std::shared_ptr<TLLayer> const& layer, AxisMove const& move);
    void makeMasterCurrent(
        TLFont const& font, std::shared_ptr<TLFontMaster> const& master, AxisMove const& move);

    void revealAddedGlyphAxis(std::shared_ptr<TLAxis> const& axis, std::shared_ptr<TLGlyph> const& glyph);
    void editAddedGlyphAxis(
        std::size_t row, std::shared_ptr<TLAxis> const& axis, std::shared_ptr<TLGlyph> const& glyph);
    void openAxisEditor(std::shared_ptr<AxisCellView> const& row);
    std::shared_ptr<EditGlyphAxisViewController> makeGlyphAxisEditor(
        std::shared_ptr<TLAxis> const& axis, std::shared_ptr<TLGlyph> const& glyph);

    std::weak_ptr<NSTableView> m_tableView;
    std::weak_ptr<NSButton> m_addButton;
    std::weak_ptr<NSSearchField> m_filterField;
    std::weak_ptr<TLPlaceholderView> m_placeholderView;
    std::weak_ptr<TLGlyphViewControllerProtocol> m_controller;
    bool m_hasRegisteredObservers { false };
    std::string m_filterQuery;
    std::weak_ptr<TLLayer> m_activeLayer;
    std::shared_ptr<NSPopover> m_editGlyphAxisPopover;
    std::shared_ptr<TableState> const m_tableState { std::make_shared<TableState>() };
    std::shared_ptr<DataSource> m_dataSource;
};
