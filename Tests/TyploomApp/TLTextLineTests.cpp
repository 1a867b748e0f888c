#include "Typloom/TyploomApp/TLTextLine.h"

#include <gtest/gtest.h>

namespace {

TLTextLine makeLine(std::size_t count, NSRange selection)
{
    std::vector<TLGlyphObject> objects;
    for (std::size_t index = 0; index < count; ++index) {
        objects.push_back({ "glyph" + std::to_string(index), "light" });
    }
    TLTextLine line;
    line.setObjects(objects, 0);
    line.select(selection);
    return line;
}

} // namespace

TEST(TLTextLine, editsTheObjectAtTheStartOfTheSelection)
{
    EXPECT_EQ(makeLine(5, { 2, 0 }).editedIndex(), 2U);
    EXPECT_EQ(makeLine(5, { 1, 3 }).editedIndex(), 1U);
}

TEST(TLTextLine, editsNothingInAnEmptyTextOrBehindTheLastObject)
{
    EXPECT_EQ(makeLine(0, { 0, 0 }).editedObject(), nullptr);
    EXPECT_EQ(makeLine(3, { 3, 0 }).editedObject(), nullptr);
}

TEST(TLTextLine, clipsASelectionToTheText)
{
    EXPECT_EQ(makeLine(3, { 9, 4 }).selectedRange(), (NSRange { 3, 0 }));
    EXPECT_EQ(makeLine(3, { 1, std::size_t(-1) }).selectedRange(), (NSRange { 1, 2 }));
}

TEST(TLTextLine, stretchesTheSelectionToAnObjectOnEitherSide)
{
    EXPECT_EQ(makeLine(6, { 2, 0 }).rangeReaching(4), (NSRange { 2, 3 }));
    EXPECT_EQ(makeLine(6, { 2, 2 }).rangeReaching(0), (NSRange { 0, 4 }));
    EXPECT_EQ(makeLine(6, { 6, 0 }).rangeReaching(5), (NSRange { 5, 1 })) << "from behind the last object";
    EXPECT_EQ(makeLine(0, { 0, 0 }).rangeReaching(0), (NSRange { 0, 0 }));
}

TEST(TLTextLine, bringsTheCursorIntoANewText)
{
    auto line = makeLine(8, { 7, 0 });
    line.setObjects({ { "a", "light" }, { "b", "light" } }, 7);
    EXPECT_EQ(line.selectedRange(), (NSRange { 2, 0 }));
}
