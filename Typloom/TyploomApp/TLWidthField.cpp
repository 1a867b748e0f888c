#include "Typloom/TyploomApp/TLWidthField.h"

#include "Typloom/TyploomApp/TLNumberField.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>

#include <algorithm>

struct TLWidthField::Impl {
    std::shared_ptr<TLEditState> state;
    QPointer<QWidget> widget { new QWidget };
    TLNumberField* field { new TLNumberField };
    std::shared_ptr<TLLayer> layer; ///< Whose width the field shows.

    void build()
    {
        auto* const caption = new QLabel("Width");
        caption->setForegroundRole(QPalette::PlaceholderText);
        caption->setBuddy(field);
        field->setAccessibleName("Width");
        field->setToolTip("The advance width of the layer, in font units");
        field->setFixedWidth(72);
        field->setRange(0, widest);
        field->didChange = [this](std::optional<double> value) { take(*value); };
        auto* const layout = new QHBoxLayout(widget);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(6);
        layout->addWidget(caption);
        layout->addWidget(field);
    }

    void take(double width)
    {
        auto const glyph = layer ? layer->glyph() : nullptr;
        if (!glyph || glyph->layerForId(layer->layerId()) != layer) {
            return;
        }
        auto outline = layer->outline();
        outline.advance = std::clamp(width, 0.0, widest);
        state->font()->history().endStep();
        layer->setOutline(std::move(outline));
        field->setValue(layer->outline().advance);
    }

    void update()
    {
        auto const shown = state->editableLayer();
        if (shown != layer) {
            field->commit(); // For the layer that it was typed for.
            layer = shown;
        }
        field->setEnabled(layer != nullptr);
        field->setValue(layer ? std::optional(layer->outline().advance) : std::nullopt);
    }

    static constexpr double widest = 1e6;
};

TLWidthField::TLWidthField(std::shared_ptr<TLEditState> state)
    : m_impl(std::make_unique<Impl>())
{
    m_impl->state = std::move(state);
    m_impl->build();
    update();
}

TLWidthField::~TLWidthField()
{
    delete m_impl->widget;
}

QWidget* TLWidthField::widget() const
{
    return m_impl->widget;
}

void TLWidthField::update()
{
    m_impl->update();
}

void TLWidthField::setCancelHandler(std::function<void()> handler)
{
    m_impl->field->didCancel = std::move(handler);
}
