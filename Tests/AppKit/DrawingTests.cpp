#include "Tests/AppKit/ViewWindow.h"

#include "Platform/AppKit/CGContext.h"
#include "Platform/AppKit/NSAnimationContext.h"
#include "Platform/AppKit/NSImage.h"
#include "Platform/Qt/DrawingConversions.h"
#include "Platform/Qt/Painting.h"
#include "Platform/Qt/SymbolIcons.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>

namespace {

constexpr NSColor red { 1, 0, 0, 1 };
constexpr NSColor blue { 0, 0, 1, 1 };
constexpr NSColor white { 1, 1, 1, 1 };

/// A view of 40 by 40 that draws what the test draws, on white.
class DrawingView final : public NSView {
public:
    std::function<void(CGContext&)> draw;

    void drawRect(NSRect) override
    {
        auto* context = CGContext::current();
        context->setFillColor(white);
        CGPath all;
        all.addRect(bounds());
        context->addPath(all);
        context->fillPath();
        draw(*context);
    }
};

QImage drawn(std::function<void(CGContext&)> draw)
{
    auto const view = std::make_shared<DrawingView>();
    view->draw = std::move(draw);
    view->setFrame({ {}, { 40, 40 } });
    return qtWidget(*view)->grab().toImage();
}

NSColor pixel(QImage const& image, int x, int y)
{
    return fromQColor(image.pixelColor(x, y));
}

CGPath rectPath(NSRect rect)
{
    CGPath path;
    path.addRect(rect);
    return path;
}

double contrast(NSColor left, NSColor right)
{
    auto const luminance = [](NSColor color) {
        auto const linear
            = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
        return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue) + 0.05;
    };
    return std::max(luminance(left), luminance(right)) / std::min(luminance(left), luminance(right));
}

} // namespace

TEST(CGContext, fillsAndStrokesWhatWasAddedAndForgetsIt)
{
    auto const image = drawn([](CGContext& context) {
        context.setFillColor(red);
        context.addPath(rectPath({ { 2, 2 }, { 10, 10 } }));
        context.fillPath();
        context.setFillColor(blue);
        context.fillPath(); // Nothing is left to fill.
        context.setStrokeColor(blue);
        context.setLineWidth(4);
        context.addPath(rectPath({ { 20, 20 }, { 16, 16 } }));
        context.strokePath();
    });
    EXPECT_EQ(pixel(image, 5, 5), red);
    EXPECT_EQ(pixel(image, 13, 5), white);
    EXPECT_EQ(pixel(image, 20, 28), blue);
    EXPECT_EQ(pixel(image, 28, 28), white);
}

TEST(CGContext, restoresTransformAndColours)
{
    auto const image = drawn([](CGContext& context) {
        context.setFillColor(red);
        context.saveState();
        context.setFillColor(blue);
        context.concatenate(2, 0, 0, 2, 10, 0); // Twice as large, then ten to the right.
        context.concatenate(1, 0, 0, 1, 0, 5);
        context.addPath(rectPath({ { 0, 0 }, { 20, 2 } })); // On screen 10 to 50 by 10 to 14.
        context.fillPath();
        context.restoreState();
        context.addPath(rectPath({ { 30, 30 }, { 5, 5 } }));
        context.fillPath();
        context.restoreState(); // One more than was saved is ignored.
    });
    EXPECT_EQ(pixel(image, 12, 12), blue);
    EXPECT_EQ(pixel(image, 9, 12), white);
    EXPECT_EQ(pixel(image, 12, 9), white);
    EXPECT_EQ(pixel(image, 38, 12), blue);
    EXPECT_EQ(pixel(image, 32, 32), red);
}

TEST(CGContext, fillsOverlapsByTheNonZeroRule)
{
    auto const image = drawn([](CGContext& context) {
        auto path = rectPath({ { 0, 0 }, { 20, 20 } });
        path.addRect({ { 10, 10 }, { 20, 20 } });
        context.setFillColor(red);
        context.addPath(path);
        context.fillPath();
    });
    EXPECT_EQ(pixel(image, 15, 15), red);
}

TEST(CGContext, cosmeticLinesKeepTheirWidth)
{
    auto const image = drawn([](CGContext& context) {
        CGPath line;
        line.moveTo({ 0, 2 });
        line.lineTo({ 4, 2 });
        context.concatenate(10, 0, 0, 10, 0, 0);
        context.setStrokeColor(blue);
        context.setLineWidth(2);
        context.setCosmeticLine(true);
        context.addPath(line);
        context.strokePath();
    });
    EXPECT_EQ(pixel(image, 20, 20), blue);
    EXPECT_EQ(pixel(image, 20, 16), white);
    EXPECT_EQ(pixel(image, 20, 24), white);
}

TEST(CGContext, isThereOnlyWhileAViewDraws)
{
    CGContext* outer = nullptr;
    drawn([&](CGContext& context) {
        outer = &context;
        drawn([&](CGContext& inner) { EXPECT_NE(&inner, outer); });
        EXPECT_EQ(CGContext::current(), outer);
    });
    EXPECT_NE(outer, nullptr);
    EXPECT_EQ(CGContext::current(), nullptr);
}

TEST(CGPath, copiesPartWhenOneIsChanged)
{
    CGPath first = rectPath({ { 0, 0 }, { 10, 10 } });
    CGPath const second = first;
    first.lineTo({ 50, 0 });
    EXPECT_EQ(second.boundingBox(), (NSRect { { 0, 0 }, { 10, 10 } }));
    EXPECT_EQ(first.boundingBox().size.width, 50);
    CGPath const moved = std::move(first);
    EXPECT_EQ(moved.boundingBox().size.width, 50);
    EXPECT_EQ(CGPath().boundingBox(), NSRect());
}

TEST(CGPath, continuousCornersLieBetweenTheSquareAndTheRoundOneAndTurnSmoothly)
{
    NSRect const rect { { 0, 0 }, { 100, 60 } };
    double const radius = 10;
    auto const path = CGPath::continuousRoundedRect(rect, { radius, radius });
    EXPECT_EQ(path.boundingBox(), rect);

    // On the corner's diagonal it is about as far from the tip as a quarter circle of that radius.
    double const circle = radius * (std::sqrt(2.0) - 1);
    auto const& shape = path.impl().path;
    double onDiagonal = 0;
    while (!shape.contains(QPointF(onDiagonal, onDiagonal) / std::sqrt(2.0))) {
        onDiagonal += 0.01;
    }
    EXPECT_NEAR(onDiagonal, circle, 1);

    // The direction never jumps: between neighbouring points it turns by a little.
    double const length = shape.length();
    double last = shape.angleAtPercent(0);
    for (double at = 0.25; at < length; at += 0.25) {
        double const angle = shape.angleAtPercent(shape.percentAtLength(at));
        double const turn = std::abs(std::remainder(angle - last, 360.0));
        EXPECT_LT(turn, 8) << "at " << at;
        last = angle;
    }
}

TEST(CGPath, continuousCornersShrinkWithTheRectangle)
{
    NSRect const rect { { 5, 5 }, { 12, 4 } };
    EXPECT_EQ(CGPath::continuousRoundedRect(rect, { 50, 50 }).boundingBox(), rect);
    EXPECT_EQ(CGPath::continuousRoundedRect(rect, {}).boundingBox(), rect);
}

TEST(NSColor, followsThePaletteAndStaysReadable)
{
    auto const before = QApplication::palette();
    struct Case {
        QColor window;
        QColor text;
    };
    for (auto const& [window, text] :
        { Case { "#efefef", "#000000" }, Case { "#2b2b2b", "#eeeeee" }, Case { "#808080", "#ffffff" } }) {
        QPalette palette;
        palette.setColor(QPalette::Window, window);
        palette.setColor(QPalette::WindowText, text);
        palette.setColor(QPalette::Button, window);
        palette.setColor(QPalette::ButtonText, text);
        palette.setColor(QPalette::Highlight, Qt::green);
        QApplication::setPalette(palette);
        auto const background = fromQColor(window);
        EXPECT_EQ(NSColor::labelColor(), fromQColor(text));
        EXPECT_EQ(NSColor::controlAccentColor(), (NSColor { 0, 1, 0, 1 }));
        // A palette whose own text is hardly readable leaves nothing to take away.
        double const own = contrast(NSColor::labelColor(), background);
        EXPECT_GE(contrast(NSColor::secondaryLabelColor(), background), std::min(4.5, own) - 1e-9);
        EXPECT_GE(contrast(NSColor::tertiaryLabelColor(), background), std::min(3.0, own) - 1e-9);
        EXPECT_GE(contrast(NSColor::systemRedColor(), background), std::min(4.5, own) - 1e-9);
        if (own > 6) {
            EXPECT_NE(NSColor::secondaryLabelColor(), NSColor::labelColor());
        }
    }
    QApplication::setPalette(before);
}

TEST(NSImage, systemSymbolsAreKnownByNameAndKeepTheirConfiguration)
{
    for (auto const* name : { "slider.horizontal.below.rectangle", "plus", "chevron.left", "chevron.right",
             "info.circle", "questionmark", "magnifyingglass", "xmark.circle.fill" }) {
        auto const image = NSImage::imageWithSystemSymbolName(name, "what it does");
        ASSERT_NE(image, nullptr) << name;
        auto const large = image->imageWithSymbolConfiguration({ NSImageSymbolScale::large });
        EXPECT_EQ(large->symbolName(), name);
        EXPECT_EQ(large->accessibilityDescription(), "what it does");
        EXPECT_EQ(large->symbolConfiguration().scale, NSImageSymbolScale::large);
        EXPECT_TRUE(QRectF(0, 0, 16, 16).contains(symbolShape(name).boundingRect())) << name;
    }
    EXPECT_EQ(NSImage::imageWithSystemSymbolName("no.such.symbol"), nullptr);
}

TEST(SymbolIcon, isDrawnInTheTextColourAndAnewForEveryDensity)
{
    auto const plus = NSImage::imageWithSystemSymbolName("plus");
    auto const icon = symbolIcon(*plus);
    auto const text = QApplication::palette().color(QPalette::Active, QPalette::WindowText);
    for (double const density : { 1.0, 2.0 }) {
        auto const image = icon.pixmap(QSize(16, 16), density).toImage();
        ASSERT_EQ(image.width(), 16 * density);
        int const middle = static_cast<int>(8 * density);
        EXPECT_EQ(image.pixelColor(middle, middle).rgb(), text.rgb());
        EXPECT_EQ(image.pixelColor(static_cast<int>(3 * density), static_cast<int>(3 * density)).alpha(), 0);
    }
    auto const clear
        = symbolIcon(*NSImage::imageWithSystemSymbolName("xmark.circle.fill")).pixmap(16, 16).toImage();
    EXPECT_EQ(clear.pixelColor(8, 8).alpha(), 0); // The cross is cut out of the disc.
    EXPECT_EQ(clear.pixelColor(8, 4).rgb(), text.rgb());
    auto const disabled = icon.pixmap(QSize(16, 16), 1.0, QIcon::Disabled).toImage();
    EXPECT_NE(disabled.pixelColor(8, 8).rgb(), text.rgb());
}

TEST(NSFont, ofSizeNoughtIsTheSystemsSize)
{
    EXPECT_GT(NSFont::systemFontSize(), 0);
    EXPECT_LT(NSFont::smallSystemFontSize(), NSFont::systemFontSize());
    EXPECT_EQ(
        NSFont::monospacedDigitSystemFont(0, NSFontWeight::regular)->pointSize(), NSFont::systemFontSize());
    auto const bold = toQFont(*NSFont::systemFont(20, NSFontWeight::bold));
    EXPECT_EQ(bold.pointSizeF(), 20);
    EXPECT_TRUE(bold.bold());
}

TEST(NSFont, monospacedDigitsHaveOneWidthWhateverTheSystemsFont)
{
    QTemporaryDir const folder;
    auto const file = folder.filePath("uneven.ttf");
    QProcess::execute("/usr/bin/python3", { SOURCE_FOLDER "/Tests/AppKit/uneven_digits.py", file });
    auto const added = QFontDatabase::addApplicationFont(file);
    if (added < 0) {
        GTEST_SKIP() << "python3-fonttools is not installed";
    }
    auto const advance = [](NSFont const& font, char digit) {
        return QFontMetricsF(toQFont(font)).horizontalAdvance(QChar(digit));
    };
    auto const plain = NSFont::systemFont(20);
    auto const numbers = NSFont::legibleDigitsFontOfSize(20);
    auto const original = QApplication::font();
    EXPECT_EQ(toQFont(*numbers).family(), original.family()) << "its digits are of one width already";
    QApplication::setFont(QFont("Uneven Digits"));
    ASSERT_NE(advance(*plain, '0'), advance(*plain, '9'));
    for (char digit = '1'; digit <= '9'; ++digit) {
        EXPECT_EQ(advance(*numbers, digit), advance(*numbers, '0')) << digit;
    }
    EXPECT_EQ(toQFont(*numbers).pointSizeF(), 20);
    QApplication::setFont(original);
    QFontDatabase::removeApplicationFont(added);
}

TEST(NSAnimationContext, groupsNestAndGiveBackWhatHeldBefore)
{
    NSAnimationContext::currentContext().setDuration(0.5);
    NSAnimationContext::runAnimationGroup([](NSAnimationContext& outer) {
        outer.setDuration(0);
        NSAnimationContext::beginGrouping();
        NSAnimationContext::currentContext().setDuration(1);
        NSAnimationContext::endGrouping();
        EXPECT_EQ(&NSAnimationContext::currentContext(), &outer);
        EXPECT_EQ(outer.duration(), 0);
    });
    EXPECT_EQ(NSAnimationContext::currentContext().duration(), 0.5);
    NSAnimationContext::endGrouping(); // Closes nothing.
    EXPECT_EQ(NSAnimationContext::currentContext().duration(), 0.5);
    NSAnimationContext::currentContext().setDuration(0.25);
}
