// What a document window shows.

#include "Typloom/TyploomApp/TLDocumentWindow+Impl.h"

#include "Platform/Qt/NSViewBacking.h"
#include "Typloom/TyploomApp/TLDocumentMenus.h"
#include "Typloom/TyploomApp/TLInvitationView.h"
#include "Typloom/TyploomApp/TLLineText.h"
#include "Typloom/TyploomApp/TLStateText.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <QSplitter>
#include <QVBoxLayout>

void TLDocumentWindow::Impl::showInvitation()
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

void TLDocumentWindow::Impl::showFamily(std::shared_ptr<TLFont> font)
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
    sidebar->setCancelHandler(focusEditView);
    layOut();
    installMenus();
    follow();
    update();
    qtWidget(*lineView())->setFocus();
}

void TLDocumentWindow::Impl::layOut()
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

void TLDocumentWindow::Impl::installMenus()
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
    commands.filterAxes = [this] { sidebar->focusSearchField(); };
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
void TLDocumentWindow::Impl::follow()
{
    state->setObserver([this] {
        update();
        lineView()->setNeedsDisplay(true);
    });
    lineView()->setProblemObserver([this] { update(); });
    observer = TLNotificationObserver::make(TLUpdateInterface, [this] { update(); });
}

void TLDocumentWindow::Impl::update()
{
    toolbar->update();
    statusStrip->setText(TLStateText(*state, lineView()->knownProblem()));
    statusStrip->setCoordinates(TLStateAdvice(*state).value_or(TLCoordinatesText(*state)));
    statusStrip->setOffer(state->showsInterpolation() ? layerActions->addAction() : nullptr);
    statusStrip->setReport(problems(), notes());
    layerActions->update();
    layersPalette->update();
    widthField->update();
    operations->update();
}

void TLDocumentWindow::Impl::quit() const
{
    if (didAskToQuit) {
        didAskToQuit();
    }
}

std::vector<std::string> TLDocumentWindow::Impl::problems() const
{
    auto sentences = ownReport;
    if (operations) {
        auto const& left = operations->problems();
        sentences.insert(sentences.end(), left.begin(), left.end());
        auto const& familyReport = state->font()->report();
        sentences.insert(sentences.end(), familyReport.begin(), familyReport.end());
    }
    return sentences;
}

std::vector<std::string> TLDocumentWindow::Impl::notes() const
{
    return operations ? operations->notes() : std::vector<std::string> {};
}
