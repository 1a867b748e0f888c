#include "Typloom/TyploomApp/Describe.h"

#include "Platform/AppKit/NSStackView.h"
#include "Platform/AppKit/NSTableView.h"
#include "Platform/AppKit/NSTextField.h"
#include "Typloom/Formats/PointTypeName.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLSidebar.h"
#include "Typloom/TyploomCore/TLFont.h"
#include "Typloom/TyploomKit/TLLandmarkSlider.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {
QString text(std::string const& utf8)
{
    return QString::fromStdString(utf8);
}

/// The first view of a class, this one or one below it that `isWanted` takes; null when there is none.
template <class View, class Predicate>
std::shared_ptr<View> findView(std::shared_ptr<NSView> const& view, Predicate const& isWanted)
{
    auto const typed = std::dynamic_pointer_cast<View>(view);
    if (!view || (typed && isWanted(*typed))) {
        return typed;
    }
    for (auto const& subview : view->subviews()) {
        if (auto found = findView<View>(subview, isWanted)) {
            return found;
        }
    }
    return nullptr;
}

template <class View> std::shared_ptr<View> findView(std::shared_ptr<NSView> const& view)
{
    return findView<View>(view, [](View const&) { return true; });
}

template <class View> std::shared_ptr<View> viewNamed(NSView const& row, std::string_view identifier)
{
    return std::dynamic_pointer_cast<View>(row.descendantWithIdentifier(identifier));
}

QJsonArray numbers(std::vector<double> const& values)
{
    QJsonArray array;
    for (auto const value : values) {
        array.append(value);
    }
    return array;
}

/// The label of the hint that stands in for a slider; null while the slider is shown.
std::shared_ptr<NSTextField> hintLabel(std::shared_ptr<NSView> const& row)
{
    auto const hint = findView<NSStackView>(row, [](NSStackView const& stack) { return !stack.isHidden(); });
    return findView<NSTextField>(hint);
}

QJsonObject describeRow(std::shared_ptr<NSView> const& row)
{
    QJsonObject object;
    if (auto const label = viewNamed<NSTextField>(*row, "nameLabel")) {
        object["name"] = text(label->stringValue());
    }
    if (auto const slider = viewNamed<TLLandmarkSlider>(*row, "slider")) {
        object["enabled"] = slider->isEnabled();
        object["minimum"] = slider->minValue();
        object["maximum"] = slider->maxValue();
        object["value"] = slider->doubleValue();
        object["landmarks"] = numbers(slider->landmarks().value_or(std::vector<double>()));
    }
    if (auto const field = viewNamed<NSTextField>(*row, "valueField")) {
        object["text"] = text(field->stringValue());
    }
    if (auto const label = hintLabel(row)) {
        object["hint"] = text(label->stringValue());
    }
    return object;
}

QJsonArray describeSections(NSTableView& table)
{
    QJsonArray sections;
    QJsonObject section;
    QJsonArray rows;
    auto const finish = [&] {
        if (!section.isEmpty() || !rows.isEmpty()) {
            section["rows"] = rows;
            sections.append(section);
        }
    };
    constexpr std::size_t batch = 64;
    for (std::size_t i = 0; i < table.numberOfRows(); ++i) {
        if (i % batch == batch - 1) {
            table.layoutSubtreeIfNeeded(); // Gives the views of rows out of sight back for reuse.
        }
        auto const view = table.viewAtColumnRow(0, i, true);
        if (!table.rows()[i].isGroupRow) {
            rows.append(view ? describeRow(view) : QJsonObject());
            continue;
        }
        finish();
        rows = QJsonArray();
        auto const label = findView<NSTextField>(view);
        section = QJsonObject { { "title", text(label ? label->stringValue() : std::string()) } };
    }
    finish();
    return sections;
}

QJsonObject describeOutline(TLOutline const& outline)
{
    QJsonArray contours;
    for (auto const& contour : outline.contours) {
        QJsonArray points;
        for (auto const& point : contour.points) {
            points.append(
                QJsonObject { { "x", point.x }, { "y", point.y }, { "type", pointTypeName(point.type) } });
        }
        contours.append(points);
    }
    QJsonArray components;
    for (auto const& component : outline.components) {
        components.append(QJsonObject { { "base", text(component.base) },
            { "transform", numbers({ component.transform.begin(), component.transform.end() }) } });
    }
    return { { "advance", outline.advance }, { "contours", contours }, { "components", components } };
}

/// Titles of all tabs, from the first.
QJsonArray describeTabs(TLSidebar const& sidebar)
{
    QJsonArray titles;
    for (std::size_t i = 0; sidebar.controllerOfTab(i); ++i) {
        titles.append(text(sidebar.titleOfTab(i)));
    }
    return titles;
}

/// The texts that stand in a view, from back to front.
void addTexts(std::shared_ptr<NSView> const& view, QJsonArray& texts)
{
    if (auto const label = std::dynamic_pointer_cast<NSTextField>(view); label && !label->isHidden()) {
        texts.append(text(label->stringValue()));
    }
    for (auto const& subview : view->subviews()) {
        addTexts(subview, texts);
    }
}

/// What the sidebar shows: rows where its tab has a table, texts where it has none.
void describeSidebar(TLSidebar const& sidebar, QJsonObject& object)
{
    object["tabs"] = describeTabs(sidebar);
    auto const tab = sidebar.shownTab();
    if (!tab) {
        return;
    }
    object["tab"] = text(sidebar.titleOfTab(*tab));
    auto const view = sidebar.controllerOfTab(*tab)->view();
    if (auto const table = findView<NSTableView>(view)) {
        object["sections"] = describeSections(*table);
        return;
    }
    QJsonArray texts;
    addTexts(view, texts);
    object["texts"] = texts;
}
} // namespace

std::string DescribeWindow(TLDocumentWindow const& window)
{
    QJsonObject object { { "state", text(window.stateText()) }, { "tab", "" }, { "sections", QJsonArray() } };
    if (auto const sidebar = window.sidebar()) {
        describeSidebar(*sidebar, object);
    }
    QJsonArray report;
    for (auto const& sentence : window.font() ? window.font()->report() : std::vector<std::string>()) {
        report.append(text(sentence));
    }
    object["report"] = report;
    auto const outline = window.editedOutline();
    object["outline"] = outline ? QJsonValue(describeOutline(*outline)) : QJsonValue();
    return QJsonDocument(object).toJson(QJsonDocument::Indented).toStdString();
}
