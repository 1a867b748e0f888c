#pragma once

#include "Typloom/TyploomCore/TLFont.h"

#include <QAbstractListModel>
#include <QListView>

/// The layers of one glyph in the order of its dictionary. Texts are made for the rows that are seen.
class TLLayerListModel final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;
    static constexpr int kindRole = Qt::UserRole; ///< "Master", "Intermediate" or "Other".
    static constexpr int placeRole = Qt::UserRole + 1; ///< The coordinates; why the layer cannot be drawn.
    static constexpr int isShownRole = Qt::UserRole + 2;

    /// Null for no rows. Rows that stay keep their place; `shownLayerId` is empty when none is shown.
    void show(std::shared_ptr<TLGlyph> glyph, std::string shownLayerId);
    QModelIndex indexOfLayer(std::string_view layerId) const;
    /// The layer of a row, null for none.
    std::shared_ptr<TLLayer> layerAt(QModelIndex const& index) const;

    int rowCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;

private:
    void setLayerIds(std::vector<std::string> layerIds);

    std::shared_ptr<TLGlyph> m_glyph;
    std::vector<std::string> m_layerIds;
    std::string m_shownLayerId;
};

/// The list that shows it: two lines for a layer, a symbol of its kind, and a mark at the shown one.
class TLLayerListView final : public QListView {
public:
    explicit TLLayerListView(TLLayerListModel* model);
    QString textWithoutLayers; ///< Shown in the middle of an empty list.

protected:
    void paintEvent(QPaintEvent* event) override;
};
