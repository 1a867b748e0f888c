#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Foundation/NSNotificationCenter.h"
#include "Tests/Support/FontBuilder.h"

#include <gtest/gtest.h>

namespace {

/// Counts updates; changes something itself when told for the first time, if asked to.
class UpdateCounter final : public NSObject {
public:
    int updates { 0 };
    std::function<void()> atFirstUpdate;

    std::span<NSMethod const> methods() const override
    {
        static NSMethod const table[] { NSMethodMake(
            "didUpdateInterface:", &UpdateCounter::didUpdateInterface) };
        return table;
    }

    static std::shared_ptr<UpdateCounter> make()
    {
        NSMainQueue::runPending();
        auto counter = std::make_shared<UpdateCounter>();
        NSNotificationCenter::defaultCenter().addObserver(counter, "didUpdateInterface:", TLUpdateInterface);
        return counter;
    }

private:
    void didUpdateInterface(std::shared_ptr<NSNotification> const&)
    {
        if (++updates == 1 && atFirstUpdate) {
            atFirstUpdate();
        }
    }
};

class OneGlyphSource final : public TLGlyphSource {
public:
    std::vector<std::string> glyphNames() const override { return { "A" }; }
    std::shared_ptr<TLGlyph> loadGlyph(
        std::shared_ptr<TLFont> const&, std::string_view name, std::vector<std::string>&) override
    {
        auto const glyph = std::make_shared<TLGlyph>(std::string(name));
        FontBuilder::addGlyphAxis(glyph, "flip", "Flip", { 0, 10, 100 });
        FontBuilder::addMasterLayer(glyph, "light");
        return glyph;
    }
    std::optional<std::string> glyphNameForCharacter(char32_t) override { return std::nullopt; }
};

} // namespace

TEST(TLUpdateInterface, isPostedOnceForAnyNumberOfRequestsAndNotAtOnce)
{
    auto const counter = UpdateCounter::make();
    TLSetNeedsUpdateInterface();
    TLSetNeedsUpdateInterface();
    EXPECT_EQ(counter->updates, 0);

    NSMainQueue::runPending();
    EXPECT_EQ(counter->updates, 1);
    NSMainQueue::runPending();
    EXPECT_EQ(counter->updates, 1);
}

TEST(TLUpdateInterface, aChangeMadeWhileOneIsHandledLeadsToAnother)
{
    auto const counter = UpdateCounter::make();
    counter->atFirstUpdate = [] { TLSetNeedsUpdateInterface(); };
    TLSetNeedsUpdateInterface();

    NSMainQueue::runPending();
    EXPECT_EQ(counter->updates, 1);
    NSMainQueue::runPending();
    EXPECT_EQ(counter->updates, 2);
}

TEST(TLUpdateInterface, followsEveryKindOfChangeAndNoSettingOfTheSame)
{
    FontBuilder builder;
    auto const font = builder.font();
    auto const axis = builder.addAxis("wght", "Weight");
    auto const master = builder.addMaster("light", {});
    auto const glyph = builder.addGlyph("A");
    auto const layer = glyph->layerForId("light");
    auto const glyphAxis = std::make_shared<TLAxis>("flip", "Flip");

    struct Case {
        char const* what;
        std::function<void()> change;
    };
    std::vector<Case> const cases {
        { "axis name", [&] { axis->setName("Wt"); } },
        { "axis default", [&] { axis->setDefaultValue(5); } },
        { "master name", [&] { master->setName("Thin"); } },
        { "master value", [&] { master->setAxisInternalValue(7, "wght"); } },
        { "axis added", [&] { glyph->insertObjectInAxesAtIndex(glyphAxis, 0); } },
        { "coordinates",
            [&] {
                layer->setCoordinates({ { "flip", 5 } });
            } },
        { "outline",
            [&] {
                layer->setOutline(
                    { .advance = 5, .height = 0, .contours = {}, .components = {}, .anchors = {} });
            } },
        { "axis removed", [&] { glyph->removeObjectFromAxesAtIndex(0); } },
        { "layer removed", [&] { glyph->removeLayer("light"); } },
        { "layer added", [&] { glyph->insertLayer(layer); } },
        { "glyph added", [&] { builder.addEmptyGlyph("B"); } },
        { "font axis added", [&] { builder.addAxis("wdth", "Width"); } },
        { "font axis removed", [&] { font->removeAxis(1); } },
        { "master added", [&] { builder.addMaster("bold", {}); } },
        { "master removed", [&] { font->removeMaster(1); } },
        { "report", [&] { font->addToReport("something"); } },
    };
    auto const counter = UpdateCounter::make();
    for (auto const& [what, change] : cases) {
        counter->updates = 0;
        change();
        NSMainQueue::runPending();
        EXPECT_EQ(counter->updates, 1) << what;
    }

    counter->updates = 0;
    axis->setName("Wt");
    axis->setDefaultValue(5);
    master->setName("Thin");
    master->setAxisInternalValue(7, "wght");
    layer->setCoordinates({ { "flip", 5 } });
    font->addToReport("something");
    NSMainQueue::runPending();
    EXPECT_EQ(counter->updates, 0);
}

TEST(TLUpdateInterface, readingAGlyphIsNoChange)
{
    auto const font = std::make_shared<TLFont>();
    font->setGlyphSource(std::make_shared<OneGlyphSource>());
    auto const counter = UpdateCounter::make();

    ASSERT_NE(font->glyphForName("A"), nullptr);
    NSMainQueue::runPending();
    EXPECT_EQ(counter->updates, 0);
}
