#include "Typloom/TyploomApp/TLMasterPicker.h"

#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLStateText.h"
#include "Typloom/TyploomCore/DocumentRevision.h"

#include <QComboBox>
#include <QPointer>

#include <algorithm>

namespace {

/// What choosing an entry leads to.
struct Entry {
    std::string layerId; ///< Of a master: its identifier.
    std::string title;
    std::optional<std::size_t> masterIndex; ///< None for an intermediate layer.
    bool operator==(Entry const&) const = default;
};

std::vector<Entry> entriesFor(TLEditState const& state)
{
    std::vector<Entry> entries;
    for (auto const& master : state.font()->fontMasters()) {
        entries.push_back({ master->id(), TLShownName(master->name()), entries.size() });
    }
    if (auto const& glyph = state.editedGlyph()) {
        for (auto const& [layerId, layer] : glyph->layers()) {
            if (layer->isBraceLayer()) {
                entries.push_back({ layerId, TLLayerTitle(*state.font(), *layer), std::nullopt });
            }
        }
    }
    return entries;
}

std::string shownLayerId(TLEditState const& state)
{
    auto const& layer = state.activeLayer();
    if (layer && !state.showsInterpolation()) {
        return layer->layerId();
    }
    auto const master = state.currentMaster();
    return master ? master->id() : std::string();
}

} // namespace

struct TLMasterPicker::Impl {
    std::shared_ptr<TLEditState> state;
    QPointer<QComboBox> box { new QComboBox };
    std::vector<Entry> entries;
    std::optional<std::uint64_t> revision; ///< Of the document that the entries are of.
    std::weak_ptr<TLGlyph> glyph; ///< The same of the glyph.

    /// The separator takes a row of its own.
    std::size_t countOfMasters() const
    {
        return static_cast<std::size_t>(std::count_if(entries.begin(), entries.end(),
            [](Entry const& entry) { return entry.masterIndex.has_value(); }));
    }
    int rowOfEntry(std::size_t index) const
    {
        return static_cast<int>(entries[index].masterIndex ? index : index + 1);
    }

    void setEntries(std::vector<Entry> newEntries)
    {
        if (newEntries == entries) {
            return;
        }
        entries = std::move(newEntries);
        QStringList titles;
        for (auto const& entry : entries) {
            titles.append(toQString(entry.title));
        }
        box->clear();
        box->addItems(titles);
        if (auto const masters = countOfMasters(); masters < entries.size()) {
            box->insertSeparator(static_cast<int>(masters));
        }
    }

    void updateEntries()
    {
        if (revision == documentRevision() && glyph.lock() == state->editedGlyph()) {
            return;
        }
        revision = documentRevision();
        glyph = state->editedGlyph();
        setEntries(entriesFor(*state));
    }

    void choose(int row)
    {
        for (std::size_t index = 0; index < entries.size(); ++index) {
            if (rowOfEntry(index) != row) {
                continue;
            }
            auto const entry = entries[index]; // Choosing can change the list.
            if (entry.masterIndex) {
                state->setMasterIndex(*entry.masterIndex);
            } else {
                auto const range = state->line().selectedRange();
                state->switchToLayer(
                    entry.layerId, { range.location, std::max<std::size_t>(range.length, 1) });
            }
            return;
        }
    }
};

TLMasterPicker::TLMasterPicker(std::shared_ptr<TLEditState> state)
    : m_impl(std::make_unique<Impl>())
{
    m_impl->state = std::move(state);
    auto* const box = m_impl->box.data();
    box->setAccessibleName("Master");
    box->setToolTip("Master or intermediate layer");
    box->setFocusPolicy(Qt::TabFocus);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(12);
    box->setMinimumWidth(70); // It gives way in a narrow window.
    box->setMaxVisibleItems(24);
    // Sent for the shown entry too: that ends a preview.
    QObject::connect(box, &QComboBox::activated, box, [impl = m_impl.get()](int row) { impl->choose(row); });
    update();
}

TLMasterPicker::~TLMasterPicker()
{
    delete m_impl->box;
}

QWidget* TLMasterPicker::widget() const
{
    return m_impl->box;
}

void TLMasterPicker::update()
{
    m_impl->updateEntries();
    auto const shown = shownLayerId(*m_impl->state);
    auto const& entries = m_impl->entries;
    auto const found = std::find_if(
        entries.begin(), entries.end(), [&shown](Entry const& entry) { return entry.layerId == shown; });
    auto const row
        = found == entries.end() ? -1 : m_impl->rowOfEntry(static_cast<std::size_t>(found - entries.begin()));
    m_impl->box->setCurrentIndex(row);
}
