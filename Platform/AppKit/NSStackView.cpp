#include "Platform/AppKit/NSStackView.h"

#include "Platform/Foundation/NSFatalError.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/NSViewBacking.h"

#include <QHBoxLayout>

#include <cmath>

static QHBoxLayout* layoutOf(NSView const& stack)
{
    auto const* widget = qtWidget(stack);
    return widget ? static_cast<QHBoxLayout*>(widget->layout()) : nullptr;
}

std::shared_ptr<NSStackView> NSStackView::stackViewWithViews(
    std::vector<std::shared_ptr<NSView>> const& views)
{
    auto stack = std::make_shared<NSStackView>();
    auto* layout = new QHBoxLayout(qtWidget(*stack));
    layout->setContentsMargins({});
    for (auto const& view : views) {
        stack->addSubview(view);
        if (auto* widget = qtWidget(*view)) {
            layout->addWidget(widget, 0, Qt::AlignVCenter);
        }
    }
    stack->setSpacing(stack->spacing());
    return stack;
}

void NSStackView::setOrientation(NSLayoutOrientation orientation)
{
    if (orientation != NSLayoutOrientation::horizontal) {
        NSFatalError("A stack view stands only horizontally");
    }
}

void NSStackView::setAlignment(NSStackViewAlignment alignment)
{
    if (alignment != NSStackViewAlignment::centerY) {
        NSFatalError("A stack view aligns its views only by their centres");
    }
}

void NSStackView::setSpacing(double points)
{
    NSAssertMainThread();
    m_spacing = points;
    if (auto* layout = layoutOf(*this)) {
        layout->setSpacing(static_cast<int>(std::lround(points)));
    }
}
