#include "Typloom/TyploomApp/TLApplicationController.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"

#include <QCoreApplication>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

std::filesystem::path sampleFamily()
{
    return std::filesystem::path(SOURCE_FOLDER) / "Fonts/Skarvane/Skarvane.designspace";
}

} // namespace

TEST(TLApplicationController, hasOneWindowForAFamily)
{
    TLApplicationController application;
    auto const first = application.open(sampleFamily());
    ASSERT_NE(first.window, nullptr) << first.error;
    auto const again = application.open(sampleFamily().parent_path() / "../Skarvane/Skarvane.designspace");
    EXPECT_EQ(again.window, first.window);
    EXPECT_EQ(application.windows().size(), 1U);
}

TEST(TLApplicationController, opensAFamilyInAWindowThatHasNone)
{
    TLApplicationController application;
    application.addToReport("A plug-in does not load.");
    auto* const invitation = application.openInvitation();
    auto const outcome = application.open(sampleFamily());
    EXPECT_EQ(outcome.window, invitation);
    EXPECT_NE(invitation->font(), nullptr);
    EXPECT_EQ(invitation->report().front(), "A plug-in does not load.");
}

TEST(TLApplicationController, changesNothingWhenAFamilyCannotBeRead)
{
    TLApplicationController application;
    auto* const invitation = application.openInvitation();
    auto const outcome = application.open("/nowhere/Missing.designspace");
    EXPECT_EQ(outcome.window, nullptr);
    EXPECT_NE(outcome.error.find("Missing.designspace"), std::string::npos) << outcome.error;
    EXPECT_EQ(invitation->font(), nullptr);
    EXPECT_EQ(application.windows().size(), 1U);
}

TEST(TLApplicationController, releasesAWindowThatIsClosedAndItsFamily)
{
    TLApplicationController application;
    auto const outcome = application.open(sampleFamily());
    ASSERT_NE(outcome.window, nullptr);
    std::weak_ptr<TLFont> const font = outcome.window->font();
    outcome.window->widget()->close();
    EXPECT_TRUE(application.windows().empty());
    for (int turn = 0; turn < 5; ++turn) {
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(font.expired());
}
