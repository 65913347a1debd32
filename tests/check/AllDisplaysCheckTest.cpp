#include "check/AllDisplaysCheck.h"
#include "check/MasterMessage.h"
#include "tests/support/ListedDisplay.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::listedDisplay;

/// A message with a place of four characters; a display has the word.
Project masterProject() {
    Project project;
    project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"{tank:4}\"\r\nACT STILL 3000";
    return project;
}

std::vector<FleetDisplay> displaysWith(const std::vector<std::string>& tanks) {
    std::vector<FleetDisplay> displays;
    for (const std::string& tank : tanks)
        displays.push_back(
            listedDisplay("Line " + std::to_string(displays.size() + 1), "10.0.0.1", {{"tank", tank}}));
    return displays;
}

AllDisplaysCheck checkOf(const Project& project, std::vector<FleetDisplay> displays, int columns = 128) {
    static const NoBitmaps noBitmaps;
    return {std::make_shared<const Master>(project),
            std::make_shared<const std::vector<FleetDisplay>>(std::move(displays)), noBitmaps, columns,
            Notes::LeftOut};
}

/// "Line 1 and 1 more: STDMSG3:2 place-width"
std::vector<std::string> told(AllDisplaysCheck& check) {
    while (!check.isDone())
        check.goOn();
    std::vector<std::string> texts;
    for (const Finding& finding : check.findings().list)
        texts.push_back(check.displaysText(finding) + ": " + nameOf(finding.place) + ":" +
                        std::to_string(finding.place.line) + " " + std::string(finding.rule().name));
    return texts;
}

TEST(AllDisplaysCheck, TellsTheSameOfSeveralDisplaysOnce) {
    auto check =
        checkOf(masterProject(), displaysWith({"Nord", "Winter", "S\u00FCd", "Winter", "Sommer", "Winter"}));
    EXPECT_THAT(told(check),
                ElementsAre("Line 5: STDMSG3:2 place-width", "Line 2 and 2 more: STDMSG3:2 place-width"));
    EXPECT_EQ(check.findings().counts.errors, 2U);
    EXPECT_EQ(check.checkedCount(), 6U);
}

TEST(AllDisplaysCheck, CountsADisplayOnceHoweverOftenItHasTheSame) {
    Project project = masterProject();
    project.CoilVar[0].onText = "{no}";
    project.CoilVar[0].offText = "{no}";
    auto check = checkOf(project, displaysWith({"Nord", "West"}));
    EXPECT_THAT(told(check), ElementsAre("Line 1 and 1 more: CoilVar1:0 place-unknown"));
}

TEST(AllDisplaysCheck, GoesByTheWidthOfEachDisplay) {
    Project project = masterProject();
    project.STDMSG[2] = "CLEAR\r\nTEXT 90 0 RED BLACK \"{tank:4}\"\r\nACT STILL 3000";
    auto displays = displaysWith({"Nord", "West"});
    displays[0].columns = 96;
    auto check = checkOf(project, displays);
    EXPECT_THAT(told(check), ElementsAre("Line 1: STDMSG3:2 text-cut"));
}

TEST(AllDisplaysCheck, FindsNothingWithoutDisplays) {
    auto check = checkOf(masterProject(), {});
    EXPECT_TRUE(check.isDone());
    EXPECT_THAT(told(check), IsEmpty());
}

TEST(MasterMessage, TellsWhereInTheScriptAsItIsTyped) {
    const Project project = masterProject();
    MasterView view(project);
    view.setDisplays(displaysWith({"Winter"}));
    view.choose("Line 1");
    const Findings found = checkShownMessage(
        named("STDMSG3"), "TEXT 0 0 RED BLACK \"{tank:4}\"\r\nTEXT 0 8 RED BLACK \"{tank:8}\" 5", view,
        NoBitmaps(), 128);
    std::vector<std::string> places;
    for (const Finding& finding : found.list)
        places.push_back(std::string(finding.rule().name) + " " + std::to_string(finding.place.line) + ":" +
                         std::to_string(finding.place.column) + "+" + std::to_string(finding.place.length));
    EXPECT_THAT(places, ::testing::Contains("place-width 1:21+8"));
}

} // namespace
} // namespace orvista
