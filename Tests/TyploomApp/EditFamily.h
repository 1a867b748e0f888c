#pragma once

#include "Platform/Foundation/NSMainQueue.h"
#include "Platform/Foundation/NSNotificationCenter.h"
#include "Tests/Support/FontBuilder.h"
#include "Typloom/TyploomCore/TLUpdateInterface.h"

#include <array>
#include <utility>

/// A box from 50 units right of the origin to 50 left of the advance, 700 high; smooth at its top left.
inline TLOutline boxOutline(double advance)
{
    TLOutline outline;
    outline.advance = advance;
    outline.contours = { { { { 50, 0, TLPointType::line, false, {} },
        { advance - 50, 0, TLPointType::line, false, {} },
        { advance - 50, 700, TLPointType::line, false, {} }, { 50, 700, TLPointType::line, true, {} } } } };
    return outline;
}

/// A family with the masters "light" (weight 0, the default) and "bold" (weight 1000).
///
/// A: an intermediate layer "A-700" at weight 700. B: masters alone. C: an axis "arm" of its own with
/// the intermediate layer "C-arm" at 100. P: no layer of "bold". X: outlines that do not fit together.
/// Boxes are 400 wide in "light" and 800 in "bold".
struct EditFamily {
    FontBuilder builder;
    std::shared_ptr<TLGlyph> a, b, c, p, x;

    EditFamily()
    {
        builder.font()->setFamilyName("Boxes");
        builder.addAxis("wght", "weight", { 0, 0, 1000 }, "wght");
        builder.addMaster("light", { { "wght", 0 } }, "Light");
        builder.addMaster("bold", { { "wght", 1000 } }, "Bold");
        auto const box
            = [](TLFontMaster const& master) { return boxOutline(master.id() == "light" ? 400 : 800); };
        a = builder.addGlyph("A", box);
        builder.addBraceLayer(a, "A-700", "light", { { "wght", 700 } }, boxOutline(500));
        b = builder.addGlyph("B", box);
        c = builder.addGlyph("C", box);
        builder.addGlyphAxis(c, "arm", "arm", { 0, 0, 100 });
        builder.addBraceLayer(c, "C-arm", "light", { { "wght", 0 }, { "arm", 100 } }, boxOutline(600));
        p = builder.addEmptyGlyph("P");
        builder.addMasterLayer(p, "light", boxOutline(400));
        x = builder.addEmptyGlyph("X");
        builder.addMasterLayer(x, "light", boxOutline(400));
        auto misfit = boxOutline(800);
        misfit.contours[0].points.pop_back();
        builder.addMasterLayer(x, "bold", misfit);
        for (auto const& glyph : { a, b, c, p, x }) {
            glyph->setUnicodes({ static_cast<char32_t>(glyph->name().front()) });
        }
    }
    std::shared_ptr<TLFont> const& font() const { return builder.font(); }
};

/// Counts the interface updates, those asked for and not yet posted included.
class UpdateCounter final : public NSObject {
public:
    static std::shared_ptr<UpdateCounter> make()
    {
        NSMainQueue::runPending();
        auto const counter = std::make_shared<UpdateCounter>();
        NSNotificationCenter::defaultCenter().addObserver(counter, "didUpdateInterface:", TLUpdateInterface);
        return counter;
    }
    /// Since the last call.
    int take()
    {
        for (int turn = 0; turn < 4; ++turn) {
            NSMainQueue::runPending();
        }
        return std::exchange(m_count, 0);
    }
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods {
            NSMethodMake("didUpdateInterface:", &UpdateCounter::didUpdateInterface),
        };
        return methods;
    }
    void didUpdateInterface(std::shared_ptr<NSNotification> const&) { ++m_count; }

private:
    int m_count { 0 };
};
