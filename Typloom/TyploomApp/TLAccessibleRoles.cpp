#include "Typloom/TyploomApp/TLAccessibleRoles.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QLabel>

namespace {

constexpr char const* roleProperty = "accessibleRole";

class AccessibleTab final : public QAccessibleWidget {
public:
    explicit AccessibleTab(QAbstractButton& button)
        : QAccessibleWidget(&button, QAccessible::PageTab)
        , m_button(button)
    {
    }

    QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = m_button.isChecked();
        return state;
    }
    QStringList actionNames() const override { return QAccessibleWidget::actionNames() << pressAction(); }
    void doAction(QString const& name) override
    {
        if (name == pressAction()) {
            m_button.click();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    QAbstractButton& m_button;
};

class AccessibleNamedLine final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit AccessibleNamedLine(QLabel& label)
        : QAccessibleWidget(&label, QAccessible::StaticText)
        , m_label(label)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                                  : QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override
    {
        bool const isContent = kind == QAccessible::Value || kind == QAccessible::Description;
        return isContent ? m_label.text() : QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }

    QString text(int start, int end) const override { return m_label.text().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(m_label.text().size()); }
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(QPoint const&) const override { return -1; }
    QString attributes(int, int* start, int* end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }
    // It has neither a cursor nor a selection.
    void selection(int, int* start, int* end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override { }
    void removeSelection(int) override { }
    void setSelection(int, int, int) override { }
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override { }
    void scrollToSubstring(int, int) override { }

private:
    QLabel& m_label;
};

QAccessibleInterface* makeInterface(QString const&, QObject* object)
{
    if (!object->property(roleProperty).isValid()) {
        return nullptr;
    }
    if (auto* const button = qobject_cast<QAbstractButton*>(object)) {
        return new AccessibleTab(*button);
    }
    auto* const label = qobject_cast<QLabel*>(object);
    return label ? new AccessibleNamedLine(*label) : nullptr;
}

void present(QWidget& widget, char const* role)
{
    static bool const isInstalled = (QAccessible::installFactory(makeInterface), true);
    static_cast<void>(isInstalled);
    widget.setProperty(roleProperty, role);
}

} // namespace

void TLPresentAsTab(QAbstractButton& button)
{
    present(button, "tab");
}

void TLPresentAsNamedLine(QLabel& label)
{
    present(label, "named line");
}

void TLSetTextOfNamedLine(QLabel& label, QString const& text)
{
    auto const former = label.text();
    label.setText(text);
    if (QAccessible::isActive() && text != former && label.property(roleProperty).isValid()) {
        QAccessibleTextUpdateEvent event(&label, 0, former, text);
        QAccessible::updateAccessibility(&event);
    }
}
