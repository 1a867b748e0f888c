#include "Typloom/TyploomApp/TLLayerActions.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLStateText.h"
#include "Typloom/TyploomCore/TLLayerCommands.h"

#include <QAction>
#include <QMessageBox>
#include <QPushButton>

namespace {

QMessageBox* makeBox(QWidget& window, QMessageBox::Icon icon, QString const& text)
{
    auto* const box = new QMessageBox(icon, "Typloom", text, QMessageBox::NoButton, &window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    return box;
}

} // namespace

TLLayerActions::TLLayerActions(std::shared_ptr<TLEditState> state, QWidget& window)
    : m_state(std::move(state))
    , m_window(window)
    , m_add(new QAction("&Add layer here", &window))
    , m_delete(new QAction("&Delete Layer…", &window))
{
    m_add->setShortcut(QKeySequence("Ctrl+Shift+L"));
    m_delete->setShortcut(QKeySequence("Ctrl+Shift+Backspace"));
    QObject::connect(m_add, &QAction::triggered, &window, [this] { addLayer(); });
    QObject::connect(m_delete, &QAction::triggered, &window, [this] { askToDelete(); });
    update();
}

std::shared_ptr<TLLayer> TLLayerActions::shownLayer() const
{
    return m_state->showsInterpolation() ? nullptr : m_state->activeLayer();
}

void TLLayerActions::update()
{
    bool const isEdited = m_state->editedGlyph() != nullptr;
    m_add->setEnabled(isEdited);
    m_add->setToolTip(
        isEdited ? "Add an intermediate layer that looks as the glyph does here" : "No glyph is edited");
    auto const layer = shownLayer();
    auto const reason
        = layer ? TLReasonAgainstDeletingLayer(*layer) : std::optional<std::string>("No layer is shown.");
    m_delete->setEnabled(!reason);
    m_delete->setToolTip(reason ? toQString(*reason) : "Delete the shown layer");
}

void TLLayerActions::addLayer()
{
    auto const glyph = m_state->editedGlyph();
    if (!glyph) {
        return;
    }
    auto const master = m_state->currentMaster();
    auto const added = TLAddIntermediateLayer(*glyph, m_state->place(), master ? master->id() : "");
    if (!added.layer) {
        auto* const box = makeBox(m_window, QMessageBox::Information, toQString(added.problem));
        box->addButton(QMessageBox::Ok);
        return box->open();
    }
    auto const range = m_state->line().selectedRange();
    m_state->switchToLayer(
        added.layer->layerId(), { range.location, std::max<std::size_t>(range.length, 1) });
}

void TLLayerActions::askToDelete()
{
    auto const layer = shownLayer();
    auto const glyph = m_state->editedGlyph();
    if (!layer || TLReasonAgainstDeletingLayer(*layer)) {
        return;
    }
    auto const title = toQString(TLLayerTitle(*m_state->font(), *layer));
    auto* const box = makeBox(m_window, QMessageBox::Question,
        "Delete the layer “" + title + "” of the glyph “" + toQString(glyph->name()) + "”?");
    auto* const button = box->addButton("Delete", QMessageBox::DestructiveRole);
    box->setDefaultButton(box->addButton(QMessageBox::Cancel));
    QObject::connect(
        button, &QPushButton::clicked, &m_window, [weak = std::weak_ptr(glyph), id = layer->layerId()] {
            auto const owner = weak.lock();
            if (auto const asked = owner ? owner->layerForId(id) : nullptr) {
                TLDeleteLayer(*asked);
            }
        });
    box->open();
}
