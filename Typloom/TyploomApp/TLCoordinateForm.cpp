#include "Typloom/TyploomApp/TLCoordinateForm.h"

#include "Platform/Foundation/NSNumberFormatter.h"
#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLElidingLabel.h"
#include "Typloom/TyploomApp/TLNumberField.h"
#include "Typloom/TyploomCore/TLLayerCommands.h"

#include <QGridLayout>

#include <algorithm>

namespace {

constexpr int tallest = 260; ///< Points; then it scrolls.
constexpr int shortest = 80;

QString numberText(double value)
{
    NSNumberFormatter formatter;
    formatter.setMaximumFractionDigits(3);
    return toQString(formatter.stringFromNumber(value).value_or(std::string()));
}

QString hintFor(TLAxis const& axis, bool isOfGlyph)
{
    auto const name = toQString(axis.name()).toHtmlEscaped();
    return isOfGlyph
        ? name + ": empty where the layer has no coordinate; it then stands at "
            + numberText(axis.defaultValue())
        : name + ", between " + numberText(axis.minimum()) + " and " + numberText(axis.maximum());
}

} // namespace

TLCoordinateForm::TLCoordinateForm()
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    setAccessibleName("Coordinates of the layer");
}

QSize TLCoordinateForm::sizeHint() const
{
    auto const content = widget() ? widget()->sizeHint() : QSize();
    return { 120, std::min(content.height(), tallest) };
}

QSize TLCoordinateForm::minimumSizeHint() const
{
    auto const width = widget() ? widget()->minimumSizeHint().width() : 0;
    return { std::max(120, width), std::min(sizeHint().height(), shortest) };
}

void TLCoordinateForm::show(
    std::shared_ptr<TLGlyph> const& glyph, std::shared_ptr<TLLayer> const& layer, TLLocation const& place)
{
    if (layer != m_layer) {
        commit();
        m_layer = layer;
    }
    setVisible(glyph != nullptr);
    if (!glyph) {
        return;
    }
    auto const& fontAxes = glyph->font()->canonicalAxes();
    auto axes = fontAxes;
    axes.insert(axes.end(), glyph->axes().begin(), glyph->axes().end());
    bool const isSame = widget() && fontAxes.size() == m_countOfFontAxes
        && std::equal(m_rows.begin(), m_rows.end(), axes.begin(), axes.end(),
            [](Row const& row, auto const& axis) { return row.axis == axis; });
    if (!isSame) {
        commit();
        build(*glyph);
    }
    describeAxes();
    showValues(place);
}

void TLCoordinateForm::commit()
{
    for (auto const& row : std::vector(m_rows)) {
        row.field->commit();
    }
}

void TLCoordinateForm::build(TLGlyph const& glyph)
{
    auto* const content = new QWidget;
    auto* const layout = new QGridLayout(content);
    layout->setContentsMargins(12, 6, 12, 6);
    layout->setVerticalSpacing(4);
    layout->setColumnStretch(1, 1);
    m_rows.clear();
    m_countOfFontAxes = glyph.font()->canonicalAxes().size();
    for (auto const& axis : glyph.font()->canonicalAxes()) {
        addRow(*layout, axis, false);
    }
    if (!glyph.axes().empty()) {
        addCaption(*layout, "Glyph Axes");
    }
    for (auto const& axis : glyph.axes()) {
        addRow(*layout, axis, true);
    }
    setWidget(content);
    updateGeometry();
}

void TLCoordinateForm::addCaption(QGridLayout& layout, QString const& text)
{
    auto* const label = new TLElidingLabel;
    label->showText(text);
    label->setForegroundRole(QPalette::PlaceholderText);
    layout.addWidget(label, layout.rowCount(), 0, 1, 2);
}

void TLCoordinateForm::addRow(QGridLayout& layout, std::shared_ptr<TLAxis> const& axis, bool isOfGlyph)
{
    auto* const field = new TLNumberField;
    field->setAllowsNone(isOfGlyph);
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance("00000") + 16);
    if (isOfGlyph) {
        field->setPlaceholderText("none");
    } else {
        field->setRange(axis->minimum(), axis->maximum());
    }
    field->didChange = [this, axis](std::optional<double> value) { take(*axis, value); };
    field->didCancel = [this] {
        if (didCancel) {
            didCancel();
        }
    };
    auto* const label = new TLElidingLabel;
    label->setBuddy(field);
    auto const row = layout.rowCount();
    layout.addWidget(label, row, 0);
    layout.addWidget(field, row, 1);
    m_rows.push_back({ axis, label, field, {} });
}

/// An axis of the glyph's own keeps its object while it gets another name or default.
void TLCoordinateForm::describeAxes()
{
    for (auto& row : m_rows) {
        if (row.described == row.axis->state()) {
            continue;
        }
        row.described = row.axis->state();
        auto const name = toQString(row.axis->name());
        row.label->showText(name);
        auto const index = static_cast<std::size_t>(&row - m_rows.data());
        row.field->setAccessibleName(name + " coordinate");
        row.field->setToolTip(hintFor(*row.axis, index >= m_countOfFontAxes));
    }
}

void TLCoordinateForm::take(TLAxis const& axis, std::optional<double> value)
{
    auto const layer = m_layer; // Lives on when what is typed changes what is shown.
    auto const glyph = layer ? layer->glyph() : nullptr;
    if (glyph && glyph->layerForId(layer->layerId()) == layer
        && TLSetLayerCoordinate(*layer, axis.axisId(), value)) {
        showValues({});
    }
}

void TLCoordinateForm::showValues(TLLocation const& place)
{
    auto const valueOn = [&](std::string const& axisId) -> std::optional<double> {
        return m_layer ? m_layer->axisInternalValueValue(axisId) : TLLocationNumber(place, axisId);
    };
    for (auto const& row : m_rows) {
        row.field->setEnabled(m_layer != nullptr);
        row.field->setValue(valueOn(row.axis->axisId()));
    }
}
