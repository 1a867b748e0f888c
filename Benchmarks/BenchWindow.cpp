#include "Benchmarks/BenchWindow.h"

#include "Moravel/Plugin.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSMainQueue.h"
#include "Typloom/TyploomApp/Snapshot.h"
#include "Typloom/TyploomApp/TLSidebar.h"

#include <QWidget>

void loadPlugin()
{
    static bool const isLoaded = [] {
        TLRegisterViewClasses();
        // Held, since a bundle is found by its identifier as long as somebody has it.
        static auto const bundle = NSBundle::bundleWithPath(BUILD_FOLDER "/PlugIns/Moravel.bundle");
        std::shared_ptr<TyploomPlugin> plugin;
        TyploomPluginEntry("SidebarViewController", &plugin);
        static auto const held = plugin;
        held->loadPlugin();
        return true;
    }();
    static_cast<void>(isLoaded);
}

static void appendUtf8(std::string& text, char32_t character) // Of three bytes.
{
    text += static_cast<char>(0xE0 | (character >> 12));
    text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (character & 0x3F));
}

static std::string lineOf(std::size_t rings)
{
    std::string text;
    appendUtf8(text, bigCharacter);
    for (std::size_t ring = 0; ring < rings; ++ring) {
        appendUtf8(text, static_cast<char32_t>(firstRingCharacter + ring));
    }
    return text;
}

BenchWindow::BenchWindow(FamilySize const& size, std::size_t rings, std::size_t glyphsInFamily)
    : BenchWindow(syntheticFamily(size, std::max(rings, glyphsInFamily)), lineOf(rings))
{
}

BenchWindow::BenchWindow(std::shared_ptr<TLFont> font, std::string const& text)
    : m_font(std::move(font))
{
    loadPlugin();
    m_window = std::make_unique<TLDocumentWindow>(m_font);
    m_window->widget()->resize(1400, 900);
    m_window->widget()->show();
    m_window->setText(text);
    SettleEvents();
}

QWidget& BenchWindow::widget()
{
    return *m_window->widget();
}

SidebarViewController& BenchWindow::sidebar()
{
    return dynamic_cast<SidebarViewController&>(*m_window->sidebar()->controllerOfTab(0));
}

std::shared_ptr<AxisCellView> BenchWindow::row(std::size_t axis)
{
    return std::dynamic_pointer_cast<AxisCellView>(sidebar().tableView()->viewAtColumnRow(0, 1 + axis, true));
}

void BenchWindow::refresh()
{
    sidebar().applyTableModel(sidebar().makeTableModel(), nullptr, {});
}

void BenchWindow::slide(std::shared_ptr<AxisCellView> const& row, double value)
{
    sidebar().axisCellViewDidChangeValue(row, value);
    NSMainQueue::runPending();
}

double valueAtTick(std::size_t tick)
{
    return double(1 + 10 * (tick % 900) + tick % 9) / 10;
}
