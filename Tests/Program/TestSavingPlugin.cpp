#include "Tests/Program/SavedGenerations.h"
#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomKit/TLCallbackHandler.h"
#include "Typloom/TyploomKit/TyploomPlugin.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <iostream>

namespace {

/// A tab that brings its window's family from one generation to the next and presses the key that saves, for
/// as long as the program lasts. Tells of each save with a line.
class SavingController final : public NSViewController, public TLEditViewSidebarControllerProtocol {
public:
    std::shared_ptr<NSView> view() override { return NSViewController::view(); }
    void setController(std::weak_ptr<TLGlyphViewControllerProtocol> controller) override
    {
        m_editView = controller;
        QTimer::singleShot(0, qApp, [this] { goOn(); });
    }

private:
    void goOn()
    {
        auto const editView = std::dynamic_pointer_cast<TLEditViewController>(m_editView.lock());
        auto const* const window = QApplication::activeWindow();
        if (!editView || !window) {
            QTimer::singleShot(1, qApp, [this] { goOn(); });
            return;
        }
        auto const font = editView->windowController()->documentFont();
        makeGeneration(*font, generationOf(*font) + 1);
        QCoreApplication::processEvents();
        QTest::keyClick(window->windowHandle(), Qt::Key_S, Qt::ControlModifier);
        QCoreApplication::processEvents();
        if (window->isWindowModified()) {
            std::cout << "not saved" << std::endl;
            std::_Exit(3);
        }
        std::cout << "saved" << std::endl;
        QTimer::singleShot(0, qApp, [this] { goOn(); });
    }

    std::weak_ptr<TLGlyphViewControllerProtocol> m_editView;
};

class SavingPlugin final : public TyploomPlugin {
public:
    unsigned interfaceVersion() const override { return 1; }
    void loadPlugin() override
    {
        TLCallbackHandler::addEditViewLeftSidebarController({ .name = "Saving",
            .make = [] { return std::make_shared<SavingController>(); },
            .title = [] { return std::string("Saving"); },
            .tabBarImage = {} });
    }
};

} // namespace

extern "C" __attribute__((visibility("default"))) void TyploomPluginEntry(
    char const*, std::shared_ptr<TyploomPlugin>* result)
{
    *result = std::make_shared<SavingPlugin>();
}
