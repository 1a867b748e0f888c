#include "Platform/Qt/QtView.h"
#include "Platform/Qt/SliderAccessibility.h"
#include "Platform/Qt/TableAccessibility.h"

#include <QAccessibleWidget>

namespace {

/// A view without a role of its own; that of a row lies in its row's entry.
class AccessibleView final : public QAccessibleWidget {
public:
    explicit AccessibleView(QWidget& widget)
        : QAccessibleWidget(&widget, QAccessible::Client)
    {
    }

    QAccessibleInterface* parent() const override
    {
        auto* const row = accessibleRowOf(*widget());
        return row ? row : QAccessibleWidget::parent();
    }
    QString text(QAccessible::Text kind) const override
    {
        bool const isToldByRow = kind == QAccessible::Name && accessibleRowOf(*widget());
        return isToldByRow ? QString() : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* makeInterface(QString const&, QObject* object)
{
    if (!object->isWidgetType()) {
        return nullptr;
    }
    auto& widget = static_cast<QWidget&>(*object);
    if (auto* const slider = makeAccessibleSlider(widget)) {
        return slider;
    }
    if (auto* const table = makeAccessibleTable(widget)) {
        return table;
    }
    return qobject_cast<QtView*>(object) ? new AccessibleView(widget) : nullptr;
}

void installAccessibility()
{
    QAccessible::installFactory(makeInterface);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(installAccessibility)
