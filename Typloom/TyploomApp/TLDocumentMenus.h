#pragma once

#include <functional>

class QAction;
class QMainWindow;
class QMenu;

/// What the menus of a window lead to. Menus of operations that are empty are left out.
struct TLMenuCommands {
    std::function<void()> open, quit;
    /// Puts the families that were opened last into a menu that is about to be shown.
    std::function<void(QMenu&)> fillRecent;
    QAction* save { nullptr };
    QAction* saveCopy { nullptr };
    QAction* undo { nullptr };
    QAction* redo { nullptr };
    std::function<void()> fontInfo;
    QAction* addLayer { nullptr };
    QAction* deleteLayer { nullptr };
    QAction* showLayers { nullptr };
    std::function<void()> filterAxes;
    std::function<void()> zoomIn, zoomOut, zoomToFit;
    std::function<void()> findGlyph, editText;
    std::function<void()> previousGlyph, nextGlyph;
};

/// Makes the window's menu bar anew.
void TLInstallMenus(QMainWindow& window, TLMenuCommands const& commands);
