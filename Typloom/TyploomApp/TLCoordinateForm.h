#pragma once

#include "Typloom/TyploomCore/TLFont.h"

#include <QScrollArea>

class QGridLayout;
class TLElidingLabel;
class TLNumberField;

/// Where the view stands: a field for each axis of the font, then for each of the glyph's own. The
/// coordinates of an intermediate layer can be typed.
class TLCoordinateForm final : public QScrollArea {
public:
    TLCoordinateForm();

    /// What is being typed counts for the layer that it was typed for. Without an intermediate layer
    /// (null) the fields tell the place and can't be changed; without a glyph there is no form.
    void show(std::shared_ptr<TLGlyph> const& glyph, std::shared_ptr<TLLayer> const& layer,
        TLLocation const& place);
    std::function<void()> didCancel; ///< Escape, with nothing typed.

protected:
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    struct Row {
        std::shared_ptr<TLAxis> axis;
        TLElidingLabel* label;
        TLNumberField* field;
        TLAxisState described; ///< The axis as label and hint tell of it.
    };
    void commit();
    void build(TLGlyph const& glyph);
    static void addCaption(QGridLayout& layout, QString const& text);
    void addRow(QGridLayout& layout, std::shared_ptr<TLAxis> const& axis, bool isOfGlyph);
    void describeAxes();
    void take(TLAxis const& axis, std::optional<double> value);
    void showValues(TLLocation const& place);

    std::vector<Row> m_rows;
    std::size_t m_countOfFontAxes { 0 };
    std::shared_ptr<TLLayer> m_layer;
};
