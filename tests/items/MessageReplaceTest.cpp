#include "items/MessageReplace.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<ReplaceHit> found(const Project& project, const std::string& wanted, const std::string& with,
                              Case letters = Case::Folded) {
    return findToReplace(project, wanted, with, letters).list;
}

Project projectToReplaceIn() {
    Project project;
    project.STDMSG[2] =
        "CLEAR\r\nTEXT 0 0 RED BLACK \"Pump pump\"\nACT STILL 1000\rTEXT 0 0 RED BLACK \"pump\"";
    project.ALTMSG[0] = "PUMP";
    return project;
}

TEST(FindToReplace, TellsEachPlaceWithItsLineOldAndNew) {
    EXPECT_THAT(
        found(projectToReplaceIn(), "pump", "Valve"),
        ElementsAre(ReplaceHit{named("STDMSG3"), 27, 2, ReplaceWhere::Text,
                               "TEXT 0 0 RED BLACK \"Pump pump\"", "TEXT 0 0 RED BLACK \"Valve pump\""},
                    ReplaceHit{named("STDMSG3"), 32, 2, ReplaceWhere::Text,
                               "TEXT 0 0 RED BLACK \"Pump pump\"", "TEXT 0 0 RED BLACK \"Pump Valve\""},
                    ReplaceHit{named("STDMSG3"), 73, 4, ReplaceWhere::Text, "TEXT 0 0 RED BLACK \"pump\"",
                               "TEXT 0 0 RED BLACK \"Valve\""},
                    ReplaceHit{named("ALTMSG1"), 0, 1, ReplaceWhere::Other, "PUMP", "Valve"}));
}

/// What the only hit of "aa" belongs to.
ReplaceWhere whereOf(const std::string& script) {
    Project project;
    project.STDMSG[0] = script;
    return found(project, "aa", "").at(0).where;
}

TEST(FindToReplace, TellsWhatThePlaceBelongsTo) {
    EXPECT_EQ(whereOf("CLEAR\r\nTEXTS 0 5 RED BLACK \"aa\""), ReplaceWhere::Text);
    EXPECT_EQ(whereOf("TEXT 0 0 RED BLACK \"x \" aa \" y\""), ReplaceWhere::Text);
    EXPECT_EQ(whereOf("TEXT 0 0 RED BLACK \"x\"aa"), ReplaceWhere::Other);
    EXPECT_EQ(whereOf("TEXT 0 0 RED BLACK aa"), ReplaceWhere::Other);
    EXPECT_EQ(whereOf("IMG 0 0 RED BLACK aa.bmp"), ReplaceWhere::Bitmap);
    EXPECT_EQ(whereOf("CLEAR\naa\nTEXT 0 0 RED BLACK \"x\""), ReplaceWhere::Other);
    EXPECT_EQ(whereOf("DISPVAR 0 0 RED BLACK aa"), ReplaceWhere::Other);
}

TEST(FindToReplace, CountsAPlaceOverAnEdgeAsOther) {
    Project project;
    project.STDMSG[0] = "TEXT 0 0 RED BLACK \"ab\"";
    EXPECT_EQ(found(project, "\"a", "").at(0).where, ReplaceWhere::Other);
    EXPECT_EQ(found(project, "b\"", "").at(0).where, ReplaceWhere::Other);
    EXPECT_EQ(found(project, "ab", "").at(0).where, ReplaceWhere::Text);
}

TEST(FindToReplace, MindsTheCaseWhenAskedTo) {
    EXPECT_EQ(found(projectToReplaceIn(), "pump", "", Case::Matters).size(), 2U);
    EXPECT_EQ(found(projectToReplaceIn(), "PUMP", "", Case::Matters).size(), 1U);
}

TEST(FindToReplace, FindsPlacesThatDoNotOverlap) {
    Project project;
    project.STDMSG[0] = "aaaaa";
    const auto hits = found(project, "aa", "a");
    ASSERT_EQ(hits.size(), 2U);
    EXPECT_EQ(hits[1].at, 2U);
}

TEST(FindToReplace, FindsNothingWithoutAText) {
    EXPECT_THAT(found(projectToReplaceIn(), "", "x"), IsEmpty());
    EXPECT_THAT(found(projectToReplaceIn(), "valve", "x"), IsEmpty());
}

TEST(FindToReplace, CutsLongLinesAroundThePlace) {
    Project project;
    project.STDMSG[0] = "x\r\n" + std::string(100, 'a') + "HIT" + std::string(100, 'b');
    const auto hits = found(project, "HIT", "y");
    ASSERT_EQ(hits.size(), 1U);
    EXPECT_EQ(hits[0].before, "\x85" + std::string(60, 'a') + "HIT" + std::string(60, 'b') + "\x85");
    EXPECT_EQ(hits[0].after, "\x85" + std::string(60, 'a') + "y" + std::string(60, 'b') + "\x85");
}

TEST(FindToReplace, StopsAtAThousandPlaces) {
    Project project;
    project.STDMSG[0] = std::string(1000, 'x');
    EXPECT_TRUE(findToReplace(project, "x", "", Case::Matters).isComplete);
    project.ALTMSG[19] = "x";
    const ReplaceHits hits = findToReplace(project, "x", "", Case::Matters);
    EXPECT_FALSE(hits.isComplete);
    EXPECT_EQ(hits.list.size(), 1000U);
}

TEST(ReplacedScripts, HoldTheNewTextAtTheChosenPlacesOnly) {
    const Project project = projectToReplaceIn();
    auto hits = found(project, "pump", "Valve");
    hits.erase(hits.begin() + 1);
    Project replaced = project;
    applyChanges(replaced, replacedScripts(project, hits, 4, "Valve"));
    EXPECT_EQ(replaced.STDMSG[2], "CLEAR\r\nTEXT 0 0 RED BLACK \"Valve pump\"\nACT STILL 1000\r"
                                  "TEXT 0 0 RED BLACK \"Valve\"");
    EXPECT_EQ(replaced.ALTMSG[0], "Valve");
    EXPECT_EQ(replacedScripts(project, hits, 4, "Valve").size(), 2U);
    EXPECT_THAT(replacedScripts(project, {}, 4, "Valve"), IsEmpty());
}

TEST(ReplacedScripts, OfWhichNothingIsLeftAreClear) {
    const Project project = projectToReplaceIn();
    auto hits = found(project, "pump", "");
    EXPECT_THAT(replacedScripts(project, {hits.back()}, 4, ""),
                ElementsAre(changed("ALTMSG1", "script", "PUMP", "CLEAR")));
}

} // namespace
} // namespace orvista
