#include "Tests/Program/SavedGenerations.h"
#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomKit/TLCallbackHandler.h"
#include "Typloom/TyploomKit/TyploomPlugin.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
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

/// A tab that changes the family and never saves it, once it has answered whether to restore what an earlier
/// run has left. Tells of the generation with a line.
class WorkingController final : public NSViewController, public TLEditViewSidebarControllerProtocol {
public:
    std::shared_ptr<NSView> view() override { return NSViewController::view(); }
    void setController(std::weak_ptr<TLGlyphViewControllerProtocol> controller) override
    {
        m_editView = controller;
        QTimer::singleShot(0, qApp, [this] { work(); });
    }

private:
    void work()
    {
        auto const editView = std::dynamic_pointer_cast<TLEditViewController>(m_editView.lock());
        if (!editView || QApplication::topLevelWidgets().empty()) {
            QTimer::singleShot(1, qApp, [this] { work(); });
            return;
        }
        auto const font = editView->windowController()->documentFont();
        std::cout << (generationOf(*font) < 0 ? "opened as it was" : "opened changed") << std::endl;
        for (auto* const widget : QApplication::topLevelWidgets()) {
            if (auto const* const box = qobject_cast<QMessageBox*>(widget)) {
                QTest::mouseClick(box->buttons().front(), Qt::LeftButton);
                std::cout << "restored " << generationOf(*font) << std::endl;
                return;
            }
        }
        makeGeneration(*font, 1);
        std::cout << "changed " << generationOf(*font) << std::endl;
    }

    std::weak_ptr<TLGlyphViewControllerProtocol> m_editView;
};

template <class Controller> class TestingPlugin final : public TyploomPlugin {
public:
    unsigned interfaceVersion() const override { return 1; }
    void loadPlugin() override
    {
        TLCallbackHandler::addEditViewLeftSidebarController({ .name = "Testing",
            .make = [] { return std::make_shared<Controller>(); },
            .title = [] { return std::string("Testing"); },
            .tabBarImage = {} });
    }
};

} // namespace

extern "C" __attribute__((visibility("default"))) void TyploomPluginEntry(
    char const* className, std::shared_ptr<TyploomPlugin>* result)
{
    if (std::string_view(className) == "SavingPlugin") {
        *result = std::make_shared<TestingPlugin<SavingController>>();
    } else if (std::string_view(className) == "WorkingPlugin") {
        *result = std::make_shared<TestingPlugin<WorkingController>>();
    }
}
