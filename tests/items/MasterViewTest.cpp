#include "items/MasterView.h"

#include "tests/support/ListedDisplay.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

using testing::listedDisplay;

std::vector<FleetDisplay> twoLines() {
    return {listedDisplay("Line 1", "10.0.0.1", {{"line", "1"}}),
            listedDisplay("Line 2", "10.0.0.2", {{"line", "2"}})};
}

struct Looked {
    Looked() { project.STDMSG[0] = "TEXT 0 0 RED BLACK \"{line:3}|{{\""; }
    std::string text() const { return view.shown().STDMSG[0].substr(19); }

    Project project;
    MasterView view{project};
};

TEST(MasterView, LeavesAProjectThatIsNoMasterAsItIs) {
    const Looked looked;
    EXPECT_FALSE(looked.view.isMaster());
    EXPECT_EQ(&looked.view.shown(), &looked.project);
    EXPECT_EQ(looked.view.filled("\"{line:3}\""), "\"{line:3}\"");
}

TEST(MasterView, ShowsNamesUntilADisplayIsChosen) {
    Looked looked;
    looked.view.setDisplays(twoLines());
    EXPECT_EQ(looked.text(), "\"lin|{\"");
    looked.view.choose("Line 2");
    EXPECT_EQ(looked.text(), "\"2  |{\"");
    EXPECT_EQ(looked.view.filled("TEXT 0 0 RED BLACK \"{line:1}\""), "TEXT 0 0 RED BLACK \"2\"");
    EXPECT_EQ(looked.view.shown().IP, "10.0.0.2");
    looked.view.choose({});
    EXPECT_EQ(looked.text(), "\"lin|{\"");
}

TEST(MasterView, FollowsTheProject) {
    Looked looked;
    looked.view.setDisplays(twoLines());
    looked.view.choose("Line 1");
    const auto before = looked.view.master();
    EXPECT_EQ(looked.view.master(), before);
    looked.project.STDMSG[0] = "TEXT 0 0 RED BLACK \"{line:1}{line:1}\"";
    EXPECT_EQ(looked.text(), "\"11\"");
    EXPECT_NE(looked.view.master(), before);
    looked.project.CoilVar[3].onText = "{line}";
    EXPECT_EQ(looked.view.shown().CoilVar[3].onText, "1");
}

TEST(MasterView, ComesBackToADisplayThatTheListHasAgain) {
    Looked looked;
    looked.view.setDisplays(twoLines());
    looked.view.choose("Line 2");
    looked.view.setDisplays({});
    EXPECT_EQ(looked.view.display(), nullptr);
    EXPECT_EQ(looked.text(), "\"lin|{\"");
    looked.view.setDisplays(twoLines());
    EXPECT_EQ(looked.text(), "\"2  |{\"");
    looked.view.setPlain();
    EXPECT_EQ(looked.text(), "\"{line:3}|{{\"");
    looked.view.setDisplays(twoLines());
    EXPECT_EQ(looked.view.display(), nullptr);
}

TEST(MasterView, TellsWhatKeepsPlacesFromBeingFilled) {
    Looked looked;
    looked.project.STDMSG[1] = "TEXT 0 0 RED BLACK \"{tank:4}\"";
    looked.view.setDisplays(twoLines());
    looked.view.choose("Line 1");
    ASSERT_EQ(looked.view.expansion().errors.size(), 1U);
    EXPECT_EQ(looked.view.expansion().errors.front().text, "the list has no column 'tank'");
}

} // namespace
} // namespace orvista
