#pragma once

#include "Benchmarks/SyntheticFamily.h"

#include "Moravel/AxisCellView.h"
#include "Moravel/SidebarViewController.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"

class QWidget;

/// Makes the plug-in known to the host, once.
void loadPlugin();

/// A document's window with the plug-in's tab, on the offscreen platform.
class BenchWindow {
public:
    /// Of a synthetic family, with a line of the glyph "big", edited, and `rings` others.
    BenchWindow(FamilySize const& size, std::size_t rings, std::size_t glyphsInFamily = 0);
    BenchWindow(std::shared_ptr<TLFont> font, std::string const& text);

    std::shared_ptr<TLFont> const& font() const { return m_font; }
    TLDocumentWindow& window() { return *m_window; }
    QWidget& widget();
    SidebarViewController& sidebar();
    /// The row of a font axis, by its place in the font; null when there is none.
    std::shared_ptr<AxisCellView> row(std::size_t axis);
    /// Makes the model anew and shows it, as each notification of the host does.
    void refresh();
    /// A value from a slider, up to the rows that show it. Paints nothing.
    void slide(std::shared_ptr<AxisCellView> const& row, double value);

private:
    std::shared_ptr<TLFont> m_font;
    std::unique_ptr<TLDocumentWindow> m_window;
};

/// A value between the sources for each tick: no two neighbours alike, none on a source's place.
double valueAtTick(std::size_t tick);
