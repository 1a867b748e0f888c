#include "Typloom/TyploomApp/TLDocumentMenus.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace {

void addCommand(QMenu& menu, QString const& title, QList<QKeySequence> const& shortcuts,
    std::function<void()> const& command)
{
    if (!command) {
        return;
    }
    auto* const action = menu.addAction(title);
    action->setShortcuts(shortcuts);
    QObject::connect(action, &QAction::triggered, &menu, [command] { command(); });
}

/// A menu without anything cannot be opened.
void addRecentMenu(QMenu& file, std::function<void(QMenu&)> const& fill)
{
    auto* const recent = file.addMenu("Open &Recent");
    QObject::connect(&file, &QMenu::aboutToShow, recent, [recent, fill] {
        fill(*recent);
        recent->menuAction()->setEnabled(!recent->isEmpty());
    });
}

} // namespace

void TLInstallMenus(QMainWindow& window, TLMenuCommands const& commands)
{
    auto* const bar = window.menuBar();
    bar->clear();
    auto* const file = bar->addMenu("&File");
    addCommand(*file, "&Open…", { QKeySequence::Open }, commands.open);
    if (commands.fillRecent) {
        addRecentMenu(*file, commands.fillRecent);
    }
    if (commands.save) {
        file->addActions({ commands.save, commands.saveCopy });
    }
    addCommand(*file, "&Close", { QKeySequence("Ctrl+W") }, [&window] { window.close(); });
    file->addSeparator();
    addCommand(*file, "&Quit", { QKeySequence("Ctrl+Q") }, commands.quit);
    if (!commands.zoomIn) {
        return;
    }
    auto* const edit = bar->addMenu("&Edit");
    edit->addActions({ commands.undo, commands.redo });
    auto* const view = bar->addMenu("&View");
    addCommand(*view, "Zoom &In", { QKeySequence("Ctrl++"), QKeySequence("Ctrl+=") }, commands.zoomIn);
    addCommand(*view, "Zoom &Out", { QKeySequence("Ctrl+-") }, commands.zoomOut);
    addCommand(*view, "Zoom to &Fit", { QKeySequence("Ctrl+0") }, commands.zoomToFit);
    view->addSeparator();
    addCommand(*view, "&Filter Axes", { QKeySequence("Ctrl+Shift+F") }, commands.filterAxes);
    view->addAction(commands.showLayers);
    auto* const font = bar->addMenu("F&ont");
    addCommand(*font, "Font &Info…", { QKeySequence("Ctrl+I") }, commands.fontInfo);
    auto* const glyph = bar->addMenu("&Glyph");
    addCommand(*glyph, "&Find Glyph…", { QKeySequence::Find }, commands.findGlyph);
    addCommand(*glyph, "Edit &Text…", { QKeySequence("Ctrl+T") }, commands.editText);
    glyph->addSeparator();
    addCommand(*glyph, "&Previous Glyph", { QKeySequence("Ctrl+PgUp") }, commands.previousGlyph);
    addCommand(*glyph, "&Next Glyph", { QKeySequence("Ctrl+PgDown") }, commands.nextGlyph);
    bar->addMenu("&Layer")->addActions({ commands.addLayer, commands.deleteLayer });
}
