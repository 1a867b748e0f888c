#include "Typloom/TyploomApp/TLLayerList.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLStateText.h"

#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

QString kindText(TLLayer const& layer)
{
    return layer.isMasterLayer() ? "Master" : layer.isBraceLayer() ? "Intermediate" : "Other";
}

/// What sets the layer apart comes first: the axes away from their default.
QString placeText(TLGlyph const& glyph, TLLayer const& layer)
{
    if (layer.problem()) {
        return "cannot be read";
    }
    auto const value = [&layer](TLAxis const& axis) { return layer.axisInternalValueValue(axis.axisId()); };
    auto axes = glyph.font()->canonicalAxes();
    axes.insert(axes.end(), glyph.axes().begin(), glyph.axes().end());
    std::stable_partition(axes.begin(), axes.end(), [&value](auto const& axis) {
        return value(*axis).value_or(axis->defaultValue()) != axis->defaultValue();
    });
    return toQString(TLPlaceText(std::move(axes), value));
}

/// A master's layer is a full square, an intermediate one a diamond, any other a ring.
void drawSymbol(QPainter& painter, QString const& kind, QPointF centre, QColor const& color)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.4));
    painter.setBrush(kind == "Master" ? QBrush(color) : QBrush(Qt::NoBrush));
    if (kind == "Master") {
        painter.drawRect(QRectF(centre.x() - 3.5, centre.y() - 3.5, 7, 7));
    } else if (kind == "Intermediate") {
        painter.drawPolygon(QPolygonF({ centre + QPointF(0, -5), centre + QPointF(5, 0),
            centre + QPointF(0, 5), centre + QPointF(-5, 0) }));
    } else {
        painter.drawEllipse(centre, 4, 4);
    }
}

class LayerDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(QStyleOptionViewItem const& option, QModelIndex const&) const override
    {
        return { 120, option.fontMetrics.height() * 2 + 10 };
    }

    void paint(QPainter* painter, QStyleOptionViewItem const& option, QModelIndex const& index) const override
    {
        auto const& palette = option.palette;
        bool const isShown = index.data(TLLayerListModel::isShownRole).toBool();
        painter->save();
        if (isShown) {
            painter->fillRect(option.rect, palette.color(QPalette::Highlight));
        } else if (option.state.testFlag(QStyle::State_MouseOver)) {
            painter->fillRect(option.rect, palette.color(QPalette::AlternateBase));
        }
        auto const color = palette.color(isShown ? QPalette::HighlightedText : QPalette::Text);
        auto faint = color;
        faint.setAlphaF(isShown ? 0.85F : 0.6F);
        auto const kind = index.data(TLLayerListModel::kindRole).toString();
        auto const line = option.fontMetrics.height();
        auto const top = option.rect.top() + 5;
        drawSymbol(*painter, kind, QPointF(option.rect.left() + 15.5, top + line / 2.0), faint);
        QRect const name(option.rect.left() + 30, top, option.rect.width() - 38, line);
        drawLine(*painter, option, name, index.data().toString(), color);
        auto const place = index.data(TLLayerListModel::placeRole).toString();
        drawLine(*painter, option, name.translated(0, line), place.isEmpty() ? kind : place, faint);
        if (option.state.testFlag(QStyle::State_HasFocus)) {
            painter->setPen(QPen(faint, 1, Qt::DotLine));
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
        }
        painter->restore();
    }

private:
    static void drawLine(QPainter& painter, QStyleOptionViewItem const& option, QRect area,
        QString const& text, QColor const& color)
    {
        painter.setFont(option.font);
        painter.setPen(color);
        painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft,
            option.fontMetrics.elidedText(text, Qt::ElideRight, area.width()));
    }
};

} // namespace

void TLLayerListModel::show(std::shared_ptr<TLGlyph> glyph, std::string shownLayerId)
{
    m_shownLayerId = std::move(shownLayerId);
    static std::vector<TLLayerDictionary::Entry> const none;
    auto const& entries = glyph ? glyph->layers().entries() : none;
    bool const isSame = std::equal(entries.begin(), entries.end(), m_layerIds.begin(), m_layerIds.end(),
        [](auto const& entry, std::string const& layerId) { return entry.first == layerId; });
    if (isSame && glyph == m_glyph) {
        return;
    }
    std::vector<std::string> layerIds;
    layerIds.reserve(entries.size());
    std::transform(entries.begin(), entries.end(), std::back_inserter(layerIds),
        [](auto const& entry) { return entry.first; });
    if (glyph == m_glyph) {
        return setLayerIds(std::move(layerIds));
    }
    beginResetModel();
    m_glyph = std::move(glyph);
    m_layerIds = std::move(layerIds);
    endResetModel();
}

/// Takes out and puts in what lies between the rows that stay at either end.
void TLLayerListModel::setLayerIds(std::vector<std::string> layerIds)
{
    auto const [old, now]
        = std::mismatch(m_layerIds.begin(), m_layerIds.end(), layerIds.begin(), layerIds.end());
    auto const first = static_cast<int>(now - layerIds.begin());
    auto const [oldEnd, nowEnd] = std::mismatch(m_layerIds.rbegin(), std::make_reverse_iterator(old),
        layerIds.rbegin(), std::make_reverse_iterator(now));
    auto const removed = static_cast<int>(oldEnd.base() - old);
    auto const added = static_cast<int>(nowEnd.base() - now);
    if (removed > 0) {
        beginRemoveRows({}, first, first + removed - 1);
        m_layerIds.erase(old, oldEnd.base());
        endRemoveRows();
    }
    if (added > 0) {
        beginInsertRows({}, first, first + added - 1);
        m_layerIds = std::move(layerIds);
        endInsertRows();
    }
}

QModelIndex TLLayerListModel::indexOfLayer(std::string_view layerId) const
{
    auto const found = std::find(m_layerIds.begin(), m_layerIds.end(), layerId);
    return found == m_layerIds.end() ? QModelIndex() : index(static_cast<int>(found - m_layerIds.begin()));
}

std::shared_ptr<TLLayer> TLLayerListModel::layerAt(QModelIndex const& index) const
{
    auto const row = static_cast<std::size_t>(index.row());
    return m_glyph && index.isValid() && row < m_layerIds.size() ? m_glyph->layers().find(m_layerIds[row])
                                                                 : nullptr;
}

int TLLayerListModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_layerIds.size());
}

QVariant TLLayerListModel::data(QModelIndex const& index, int role) const
{
    auto const layer = layerAt(index);
    if (!layer) {
        return {};
    }
    auto const title = [&] { return toQString(TLLayerTitle(*m_glyph->font(), *layer)); };
    switch (role) {
    case Qt::DisplayRole:
        return title();
    case kindRole:
        return kindText(*layer);
    case placeRole:
        return placeText(*m_glyph, *layer);
    case isShownRole:
        return layer->layerId() == m_shownLayerId;
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole: {
        auto const place = layer->problem() ? toQString(*layer->problem()) : placeText(*m_glyph, *layer);
        auto const text = title() + ", " + kindText(*layer) + (place.isEmpty() ? "" : ", " + place);
        return role == Qt::ToolTipRole ? text.toHtmlEscaped() : text;
    }
    default:
        return {};
    }
}

TLLayerListView::TLLayerListView(TLLayerListModel* model)
{
    setModel(model);
    setItemDelegate(new LayerDelegate(this));
    setUniformItemSizes(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName("Layers");
}

void TLLayerListView::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (model()->rowCount() == 0) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, textWithoutLayers);
    }
}
