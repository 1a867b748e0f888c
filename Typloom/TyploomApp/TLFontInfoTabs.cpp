#include "Typloom/TyploomApp/TLFontInfoTabs.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/Qt/Conversions.h"
#include "Typloom/TyploomApp/TLAddAxisDialog.h"
#include "Typloom/TyploomApp/TLInfoTable.h"
#include "Typloom/TyploomApp/TLNumberText.h"
#include "Typloom/TyploomApp/TLStateText.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"
#include "Typloom/TyploomCore/TLLayerMatching.h"

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>

#include <algorithm>

namespace {

TLInfoTable::Cell numberCell(double value, bool isEditable, QString const& toolTip = {})
{
    return { toQString(TLNumberText(value)), isEditable, true, toolTip };
}

QLabel* dimmedLabel()
{
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setWordWrap(true);
    return label;
}

std::string trimmed(std::string const& text)
{
    return fromQString(toQString(text).trimmed());
}

} // namespace

TLFontInfoTab::TLFontInfoTab(std::shared_ptr<TLEditState> state, QString const& tableName)
    : m_state(std::move(state))
    , m_table(new TLInfoTable(tableName))
    , m_reason(new QLabel)
{
    m_reason->setAccessibleName("Refusal");
    m_reason->setTextFormat(Qt::PlainText);
    m_reason->setWordWrap(true);
    m_reason->setMinimumHeight(m_reason->fontMetrics().height());
    m_table->take = [this](std::size_t row, std::size_t column, std::string const& text) {
        say(std::nullopt);
        take(row, column, text);
    };
    m_table->refresh = [this] { update(); };
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_reason);
}

void TLFontInfoTab::endEditing()
{
    m_table->endEditing();
}

void TLFontInfoTab::say(std::optional<std::string> const& reason)
{
    m_reason->setText(toQString(reason.value_or("")));
    if (reason) {
        NSBeep();
    }
}

void TLFontInfoTab::addAbove(QWidget* widget)
{
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, widget);
}

QPushButton* TLFontInfoTab::addButton(QString const& title, QLabel* caption)
{
    auto* const button = new QPushButton(title);
    button->setAutoDefault(false);
    auto* const row = new QHBoxLayout;
    row->addWidget(button);
    row->addWidget(caption, 1);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    return button;
}

TLFontInfoAxesTab::TLFontInfoAxesTab(std::shared_ptr<TLEditState> state)
    : TLFontInfoTab(std::move(state), "Axes")
    , m_familyName(new QLabel)
{
    m_familyName->setAccessibleName("Family name");
    m_familyName->setTextFormat(Qt::PlainText);
    m_familyName->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto title = m_familyName->font();
    title.setPointSizeF(title.pointSizeF() * 1.4);
    title.setWeight(QFont::DemiBold);
    m_familyName->setFont(title);
    addAbove(m_familyName);
    auto* const caption = dimmedLabel();
    caption->setText("Values are design coordinates.");
    auto* const button = addButton("Add Axis…", caption);
    connect(button, &QPushButton::clicked, this, [this] { addAxis(); });
}

void TLFontInfoAxesTab::update()
{
    m_familyName->setText(toQString(font().familyName()));
    std::vector<TLInfoTable::Row> rows;
    for (auto const& axis : font().canonicalAxes()) {
        rows.push_back({ { toQString(axis->name()), true, false, {} },
            { toQString(axis->axisTag().value_or("")), false, false, {} }, numberCell(axis->minimum(), false),
            numberCell(axis->defaultValue(), false), numberCell(axis->maximum(), false) });
    }
    table().setContent({ "Name", "Tag", "Minimum", "Default", "Maximum" }, std::move(rows));
}

void TLFontInfoAxesTab::take(std::size_t row, std::size_t, std::string const& text)
{
    auto const axis = font().canonicalAxes()[row];
    auto const name = trimmed(text);
    if (auto const reason = TLReasonAgainstAxisName(font(), name, axis.get())) {
        return say(reason);
    }
    TLRenameAxis(state().font(), *axis, name);
}

void TLFontInfoAxesTab::addAxis()
{
    endEditing();
    say(std::nullopt);
    TLOpenAddAxisDialog(*this, state().font());
}

TLFontInfoMastersTab::TLFontInfoMastersTab(std::shared_ptr<TLEditState> state)
    : TLFontInfoTab(std::move(state), "Masters")
    , m_place(dimmedLabel())
    , m_addButton(addButton("Add Master", m_place))
{
    connect(m_addButton, &QPushButton::clicked, this, [this] { addMaster(); });
}

void TLFontInfoMastersTab::update()
{
    QStringList headers { "Name" };
    for (auto const& axis : font().canonicalAxes()) {
        headers.append(toQString(axis->name()));
    }
    auto const defaultMaster = font().defaultFontMaster(nullptr);
    std::vector<TLInfoTable::Row> rows;
    for (auto const& master : font().fontMasters()) {
        bool const isDefault = master == defaultMaster;
        TLInfoTable::Row row { { toQString(master->name()), true, false, {} } };
        for (auto const& axis : font().canonicalAxes()) {
            row.push_back(numberCell(master->axisInternalValueValueForId(axis->axisId()), !isDefault,
                isDefault ? "The master at the default of every axis stays there." : ""));
        }
        rows.push_back(std::move(row));
    }
    table().setContent(headers, std::move(rows));

    auto const place = TLPlaceForMaster(font(), state().fontPlace());
    auto const there = TLMasterAtPlace(font(), place);
    m_addButton->setEnabled(!there);
    m_place->setText(there ? "The view stands on the master " + toQString(there->name())
                + ". Go to a place between the masters to add one there."
                           : "At the place of the view, "
                + toQString(TLPlaceText(font().canonicalAxes(),
                    [&place](TLAxis const& axis) { return TLLocationNumber(place, axis.axisId()); })));
}

void TLFontInfoMastersTab::take(std::size_t row, std::size_t column, std::string const& text)
{
    auto const master = font().fontMasters()[row];
    if (column > 0) {
        return takeValue(*master, *font().canonicalAxes()[column - 1], text);
    }
    auto const name = trimmed(text);
    if (auto const reason = TLReasonAgainstMasterName(font(), name, master.get())) {
        return say(reason);
    }
    font().history().endStep();
    master->setName(name);
    font().history().endStep();
}

void TLFontInfoMastersTab::takeValue(TLFontMaster& master, TLAxis const& axis, std::string const& text)
{
    auto const value = TLNumberFromText(text);
    if (!value) {
        return say("“" + text + "” is no number.");
    }
    if (auto const reason = TLReasonAgainstMasterValue(font(), master, axis, *value)) {
        return say(reason);
    }
    font().history().endStep();
    master.setAxisInternalValue(*value, axis.axisId());
    font().history().endStep();
}

/// Every glyph is read and drawn, which takes a while in a large family.
TLAddedMaster TLFontInfoMastersTab::addMasterWithProgress()
{
    QProgressDialog progress("Drawing the glyphs of the new master…", "Stop", 0, 0, this);
    progress.setWindowTitle("Add Master");
    progress.setWindowModality(Qt::ApplicationModal); // Nothing may change meanwhile.
    progress.setMinimumDuration(500);
    progress.setAutoReset(false);
    QElapsedTimer sinceShown;
    sinceShown.start();
    return TLAddMaster(
        state().font(), "New Master", state().fontPlace(), [&](std::size_t done, std::size_t steps) {
            constexpr int tick = 50; // Milliseconds.
            if (done < steps && sinceShown.elapsed() < tick) {
                return true;
            }
            sinceShown.restart();
            progress.setMaximum(static_cast<int>(steps));
            progress.setValue(static_cast<int>(done)); // Handles events: the dialog can be stopped.
            return !progress.wasCanceled();
        });
}

void TLFontInfoMastersTab::addMaster()
{
    endEditing();
    say(std::nullopt);
    auto const added = addMasterWithProgress();
    if (!added.master) {
        return say(added.problem.empty() ? std::nullopt : std::optional(added.problem));
    }
    auto const index = font().indexOfObjectInAllMasters(added.master);
    state().setMasterIndex(index);
    if (didNote) {
        didNote(added.notes);
    }
    update();
    table().beginEditing(index, 0);
}
