#include "Moravel/SidebarViewController.h"

#include "Platform/Foundation/NSMainThread.h"

std::shared_ptr<NSTableView> SidebarViewController::tableView() const
{
    NSAssertMainThread();
    return m_tableView.lock();
}

std::shared_ptr<NSButton> SidebarViewController::addButton() const
{
    NSAssertMainThread();
    return m_addButton.lock();
}

std::shared_ptr<NSSearchField> SidebarViewController::filterField() const
{
    NSAssertMainThread();
    return m_filterField.lock();
}

std::shared_ptr<TLPlaceholderView> SidebarViewController::placeholderView() const
{
    NSAssertMainThread();
    return m_placeholderView.lock();
}

void SidebarViewController::setTableView(std::weak_ptr<NSTableView> view)
{
    NSAssertMainThread();
    m_tableView = std::move(view);
}

void SidebarViewController::setAddButton(std::weak_ptr<NSButton> button)
{
    NSAssertMainThread();
    m_addButton = std::move(button);
}

void SidebarViewController::setFilterField(std::weak_ptr<NSSearchField> field)
{
    NSAssertMainThread();
    m_filterField = std::move(field);
}

void SidebarViewController::setPlaceholderView(std::weak_ptr<TLPlaceholderView> view)
{
    NSAssertMainThread();
    m_placeholderView = std::move(view);
}

std::shared_ptr<TLGlyphViewControllerProtocol> SidebarViewController::controller() const
{
    NSAssertMainThread();
    return m_controller.lock();
}

void SidebarViewController::setController(std::weak_ptr<TLGlyphViewControllerProtocol> controller)
{
    NSAssertMainThread();
    m_controller = std::move(controller);
}

/// An outlet that every interface has.
template <class View>
static std::shared_ptr<View> required(std::shared_ptr<View> view, std::string const& name)
{
    if (!view) {
        NSFatalError("SidebarViewController: the outlet '" + name + "' is not connected");
    }
    return view;
}

std::shared_ptr<NSTableView> SidebarViewController::requiredTableView() const
{
    return required(tableView(), "tableView");
}

std::shared_ptr<NSSearchField> SidebarViewController::requiredFilterField() const
{
    return required(filterField(), "filterField");
}

std::shared_ptr<NSButton> SidebarViewController::requiredAddButton() const
{
    return required(addButton(), "addButton");
}
