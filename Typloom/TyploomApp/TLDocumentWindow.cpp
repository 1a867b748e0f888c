#include "Typloom/TyploomApp/TLDocumentWindow.h"

#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Typloom/TyploomApp/TLDocumentEditViewController.h"
#include "Typloom/TyploomApp/TLDocumentMenus.h"
#include "Typloom/TyploomApp/TLDocumentOperations.h"
#include "Typloom/TyploomApp/TLDocumentToolbar.h"
#include "Typloom/TyploomApp/TLDocumentWindowController.h"
#include "Typloom/TyploomApp/TLInvitationView.h"
#include "Typloom/TyploomApp/TLLayerActions.h"
#include "Typloom/TyploomApp/TLLayersPalette.h"
#include "Typloom/TyploomApp/TLLineText.h"
#include "Typloom/TyploomApp/TLMainWindow.h"
#include "Typloom/TyploomApp/TLNotificationObserver.h"
#include "Typloom/TyploomApp/TLSidebar.h"
#include "Typloom/TyploomApp/TLStateText.h"
#include "Typloom/TyploomApp/TLStatusStrip.h"
#include "Typloom/TyploomApp/TLWidthField.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <QMessageBox>
#include <QSplitter>
#include <QVBoxLayout>

/// Members are released from the last to the first: views before the widgets that hold them.
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

    void showInvitation()
    {
        auto const open = [this] { window->chooseFile(); };
        window->setCentralWidget(TLMakeInvitationView(open));
        window->setWindowTitle("Typloom");
        TLMenuCommands commands;
        commands.open = open;
        commands.fillRecent = [this](QMenu& menu) { window->fillRecent(menu); };
        commands.quit = [this] { quit(); };
        TLInstallMenus(*window, commands);
    }

    void showFamily(std::shared_ptr<TLFont> font)
    {
        state = std::make_shared<TLEditState>(std::move(font));
        windowController = std::make_shared<TLDocumentWindowController>(state);
        editViewController = std::make_shared<TLDocumentEditViewController>(state, windowController);
        editViewController->init();
        statusStrip = std::make_unique<TLStatusStrip>();
        widthField = std::make_unique<TLWidthField>(state);
        statusStrip->addControl(widthField->widget());
        toolbar = std::make_unique<TLDocumentToolbar>(state, lineView());
        toolbar->setText(TLDefaultText(*state->font()));
        state->select({ .location = state->line().objects().size() / 2, .length = 0 });
        sidebar = std::make_shared<TLSidebar>(editViewController);
        layerActions = std::make_unique<TLLayerActions>(state, *window);
        layersPalette = std::make_unique<TLLayersPalette>(state, *layerActions);
        auto const focusEditView = [this] { qtWidget(*lineView())->setFocus(); };
        layersPalette->setCancelHandler(focusEditView);
        widthField->setCancelHandler(focusEditView);
        layOut();
        installMenus();
        follow();
        update();
        qtWidget(*lineView())->setFocus();
    }

    void layOut()
    {
        auto* const column = new QWidget;
        auto* const layout = new QVBoxLayout(column);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(toolbar->widget());
        layout->addWidget(qtWidget(*editViewController->view()), 1);
        layout->addWidget(statusStrip->widget());
        auto* const splitter = new QSplitter(Qt::Horizontal);
        splitter->setObjectName("columns");
        splitter->setChildrenCollapsible(false);
        splitter->addWidget(sidebar->widget());
        splitter->addWidget(column);
        splitter->addWidget(layersPalette->widget());
        splitter->setStretchFactor(1, 1);
        splitter->setSizes({ 300, 800, 220 });
        window->setCentralWidget(splitter);
    }

    void installMenus()
    {
        constexpr double zoomStep = 1.25;
        auto const zoom = [this](double factor) {
            auto const size = lineView()->bounds().size;
            lineView()->zoomBy(factor, { size.width / 2, size.height / 2 });
        };
        operations = std::make_unique<TLDocumentOperations>(state, *window, [this] { update(); });
        TLMenuCommands commands;
        commands.open = [this] { window->chooseFile(); };
        commands.fillRecent = [this](QMenu& menu) { window->fillRecent(menu); };
        commands.addLayer = layerActions->addAction();
        commands.deleteLayer = layerActions->deleteAction();
        commands.showLayers = layersPalette->showAction();
        commands.quit = [this] { quit(); };
        operations->addTo(commands);
        commands.zoomIn = [zoom] { zoom(zoomStep); };
        commands.zoomOut = [zoom] { zoom(1 / zoomStep); };
        commands.zoomToFit = [this] { lineView()->zoomToFit(); };
        commands.findGlyph = [this] { toolbar->focusGlyphField(); };
        commands.editText = [this] { toolbar->focusTextField(); };
        commands.previousGlyph = [this] { toolbar->chooseNeighbouringGlyph(-1); };
        commands.nextGlyph = [this] { toolbar->chooseNeighbouringGlyph(1); };
        TLInstallMenus(*window, commands);
    }

    /// The window's own controls follow at once; the views wait for the interface update.
    void follow()
    {
        state->setObserver([this] {
            update();
            lineView()->setNeedsDisplay(true);
        });
        lineView()->setProblemObserver([this] { update(); });
        observer = TLNotificationObserver::make(TLUpdateInterface, [this] { update(); });
    }

    void update()
    {
        toolbar->update();
        statusStrip->setText(TLStateText(*state, lineView()->knownProblem()));
        statusStrip->setCoordinates(TLCoordinatesText(*state));
        statusStrip->setOffer(state->showsInterpolation() ? layerActions->addAction() : nullptr);
        statusStrip->setReport(report());
        layerActions->update();
        layersPalette->update();
        widthField->update();
        operations->update();
    }

    void quit() const
    {
        if (didAskToQuit) {
            didAskToQuit();
        }
    }

    std::vector<std::string> report() const
    {
        auto sentences = ownReport;
        if (operations) {
            auto const notes = operations->notes();
            sentences.insert(sentences.end(), notes.begin(), notes.end());
            auto const& familyReport = state->font()->report();
            sentences.insert(sentences.end(), familyReport.begin(), familyReport.end());
        }
        return sentences;
    }
};

TLDocumentWindow::TLDocumentWindow(std::shared_ptr<TLFont> font)
    : m_impl(std::make_unique<Impl>())
{
    font ? m_impl->showFamily(std::move(font)) : m_impl->showInvitation();
}

TLDocumentWindow::~TLDocumentWindow()
{
    m_impl->window->didClose = nullptr;
    m_impl->window->mayClose = nullptr;
    m_impl->window->didActivate = nullptr;
    if (m_impl->state) {
        m_impl->state->setObserver(nullptr);
        m_impl->lineView()->setProblemObserver(nullptr);
    }
}

QWidget* TLDocumentWindow::widget() const
{
    return m_impl->window.get();
}

std::shared_ptr<TLFont> TLDocumentWindow::font() const
{
    return m_impl->state ? m_impl->state->font() : nullptr;
}

void TLDocumentWindow::setFont(std::shared_ptr<TLFont> font)
{
    if (font && !m_impl->state) {
        m_impl->showFamily(std::move(font));
    }
}

std::shared_ptr<TLEditViewController> TLDocumentWindow::editViewController() const
{
    return m_impl->editViewController;
}

std::shared_ptr<TLSidebar> TLDocumentWindow::sidebar() const
{
    return m_impl->sidebar;
}

void TLDocumentWindow::setText(std::string const& text)
{
    if (m_impl->state) {
        m_impl->toolbar->setText(text);
    }
}

bool TLDocumentWindow::showGlyph(std::string const& name)
{
    if (!m_impl->state || !TLFontListsGlyph(*m_impl->state->font(), name)) {
        return false;
    }
    m_impl->state->setGlyphNames({ name }, 0);
    m_impl->lineView()->centreEditedGlyph();
    return true;
}

bool TLDocumentWindow::editGlyph(std::string const& name)
{
    if (!m_impl->state || !TLFontListsGlyph(*m_impl->state->font(), name)) {
        return false;
    }
    m_impl->state->editGlyph(name);
    m_impl->lineView()->centreEditedGlyph();
    return true;
}

void TLDocumentWindow::goToLocation(TLLocation const& location)
{
    if (m_impl->state) {
        m_impl->state->goToLocation(location);
    }
}

std::string TLDocumentWindow::stateText() const
{
    if (!m_impl->state) {
        return {};
    }
    m_impl->lineView()->noticeProblem(); // Whether the sources fit is known only once they were drawn.
    m_impl->update();
    return m_impl->statusStrip->text();
}

std::optional<TLOutline> TLDocumentWindow::editedOutline() const
{
    auto const shape = m_impl->state ? m_impl->lineView()->editedShape() : nullptr;
    return shape ? std::optional(shape->outline) : std::nullopt;
}

std::vector<std::string> TLDocumentWindow::report() const
{
    return m_impl->report();
}

void TLDocumentWindow::addToReport(std::string sentence)
{
    m_impl->ownReport.push_back(std::move(sentence));
    if (m_impl->state) {
        m_impl->update();
    }
}

void TLDocumentWindow::showError(std::string const& sentence)
{
    auto* const box = new QMessageBox(
        QMessageBox::Warning, "Typloom", toQString(sentence), QMessageBox::Ok, m_impl->window.get());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->open();
}

void TLDocumentWindow::setOpenHandler(TLMainWindow::PathHandler handler)
{
    m_impl->window->didChooseFile = std::move(handler);
}

void TLDocumentWindow::setCloseHandler(std::function<void()> handler)
{
    m_impl->window->didClose = std::move(handler);
}

void TLDocumentWindow::setQuitHandler(std::function<void()> handler)
{
    m_impl->didAskToQuit = std::move(handler);
}

void TLDocumentWindow::requestClose(std::function<void(bool)> const& then)
{
    if (m_impl->operations) {
        return m_impl->operations->requestClose(then);
    }
    m_impl->window->close();
    then(true);
}
