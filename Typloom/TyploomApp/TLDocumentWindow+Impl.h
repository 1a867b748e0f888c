#pragma once

#include "Typloom/TyploomApp/TLDocumentEditViewController.h"
#include "Typloom/TyploomApp/TLDocumentOperations.h"
#include "Typloom/TyploomApp/TLDocumentToolbar.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLDocumentWindowController.h"
#include "Typloom/TyploomApp/TLLayerActions.h"
#include "Typloom/TyploomApp/TLLayersPalette.h"
#include "Typloom/TyploomApp/TLMainWindow.h"
#include "Typloom/TyploomApp/TLNotificationObserver.h"
#include "Typloom/TyploomApp/TLSidebar.h"
#include "Typloom/TyploomApp/TLStatusStrip.h"
#include "Typloom/TyploomApp/TLWidthField.h"

/// What is in the window. Members are released from the last to the first: views before the widgets that hold
/// them.
struct TLDocumentWindow::Impl {
    std::unique_ptr<TLMainWindow> window { std::make_unique<TLMainWindow>() };
    std::vector<std::string> ownReport;
    std::function<void()> didAskToQuit;
    std::shared_ptr<TLEditState> state;
    std::shared_ptr<TLDocumentWindowController> windowController;
    std::shared_ptr<TLDocumentEditViewController> editViewController;
    std::unique_ptr<TLStatusStrip> statusStrip;
    std::unique_ptr<TLWidthField> widthField;
    std::unique_ptr<TLDocumentToolbar> toolbar;
    std::shared_ptr<TLSidebar> sidebar;
    std::unique_ptr<TLLayerActions> layerActions;
    std::unique_ptr<TLLayersPalette> layersPalette;
    std::unique_ptr<TLDocumentOperations> operations;
    std::shared_ptr<TLNotificationObserver> observer;

    std::shared_ptr<TLLineEditView> const& lineView() const { return editViewController->lineView(); }

    void showInvitation();
    void showFamily(std::shared_ptr<TLFont> font);
    void update();
    /// What could not be read.
    std::vector<std::string> problems() const;
    std::vector<std::string> notes() const;

private:
    void layOut();
    void installMenus();
    void follow();
    void quit() const;
};
