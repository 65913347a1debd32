#include "tests/check/ScriptFindings.h"
#include "tests/support/NamedItem.h"
#include "tests/support/StoredBitmaps.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace orvista {
namespace {

using Found = std::vector<std::string>;

class CheckedProject : public testing::Test {
protected:
    Found found(Notes notes = Notes::LeftOut) const {
        return itemsAndCodes(checkProject(project, bitmaps, 128, notes));
    }
    std::string sentence() const {
        const Findings findings = checkProject(project, bitmaps, 128);
        EXPECT_EQ(findings.list.size(), 1U);
        return findings.list.empty() ? std::string() : findings.list[0].text;
    }
    void setStarts(std::int32_t floats, std::int32_t booleans, std::int32_t emergency) {
        project.AnalogInput = floats;
        project.DigitalInput = booleans;
        project.AlertMessage = emergency;
        project.RegularMessage = emergency + 20;
    }

    Project project;
    StoredBitmaps bitmaps;
};

TEST_F(CheckedProject, FindingsAreCountedByItem) {
    project.STDMSG[2] = "NONSENSE\r\nTEXT 0 0 RED RED \"a\"\r\nX";
    project.ALTMSG[0] = "X";
    project.RegVar[5].defaultValue = "1";
    const Findings findings = checkProject(project, bitmaps, 128, Notes::Included);
    const auto counts = countsByItem(findings);
    EXPECT_EQ(counts.size(), 3U);
    EXPECT_EQ(countsText(counts.at(named("STDMSG3"))), "2 errors, 1 warning");
    EXPECT_EQ(countsText(counts.at(named("ALTMSG1"))), "1 error");
    EXPECT_EQ(countsText(counts.at(named("RegVar6"))), "1 note");
    EXPECT_EQ(countsText(findings.counts), "3 errors, 1 warning, 1 note");
    EXPECT_EQ(countsText({0, 2, 0}), "2 warnings");
    EXPECT_EQ(countsText({}), "");
}

TEST_F(CheckedProject, TheDefaultProjectHasNothingToFind) {
    EXPECT_EQ(found(Notes::Included), Found{});
    const Findings findings = checkProject(project, bitmaps, 32);
    EXPECT_EQ(findings, Findings{});
    EXPECT_EQ(findings.notListed(), 0U);
}

TEST_F(CheckedProject, BlocksLieWithinTheAddresses) {
    setStarts(65536 - 128, 65536 - 92, 65536 - 60);
    EXPECT_EQ(found(), Found{});
    setStarts(65536 - 127, 65536 - 92, 65536 - 60);
    EXPECT_EQ(found(), Found{"address map address-range"});
    EXPECT_EQ(sentence(),
              "Float variables lie at 65409 to 65536, but addresses go from 0 to 65535, so that not all "
              "of them can be reached: choose a start from 0 to 65408.");
    setStarts(0, 0, 32);
    EXPECT_EQ(found(), Found{});
    setStarts(-1, -1, 65516);
    EXPECT_EQ(found(),
              (Found{"address map address-range", "address map address-range", "address map address-range"}));
    setStarts(100, 100, 65516);
    EXPECT_EQ(sentence(),
              "Regular messages lie at 65536 to 65575, but addresses go from 0 to 65535, so that not all "
              "of them can be reached: choose a start from 20 to 65496.");
    // As high as this the emergency messages leave no room for the regular ones, which follow them.
    setStarts(100, 100, 65517);
    const Findings both = checkProject(project, bitmaps, 128);
    ASSERT_EQ(both.list.size(), 2U);
    EXPECT_EQ(both.list[0].text,
              "Emergency messages lie at 65517 to 65536, but addresses go from 0 to 65535, so that not all "
              "of them can be reached: choose a start from 0 to 65476.");
    setStarts(100, 100, 65476);
    EXPECT_EQ(found(), Found{});
}

TEST_F(CheckedProject, StartsAtTheEndsOfTheirRangeAreNoTrouble) {
    constexpr auto largest = std::numeric_limits<std::int32_t>::max();
    constexpr auto smallest = std::numeric_limits<std::int32_t>::min();
    project.AnalogInput = project.DigitalInput = project.AlertMessage = project.RegularMessage = largest;
    EXPECT_EQ(found().size(), 8U);
    project.AnalogInput = project.DigitalInput = project.AlertMessage = project.RegularMessage = smallest;
    EXPECT_EQ(found().size(), 8U);
}

TEST_F(CheckedProject, BlocksOfCoilsDoNotOverlap) {
    setStarts(300, 268, 300);
    EXPECT_EQ(found(), Found{});
    setStarts(300, 269, 300);
    EXPECT_EQ(found(), Found{"address map address-overlap"});
    EXPECT_EQ(sentence(),
              "Boolean variables (269 to 300) and emergency messages (300 to 319) share coil 300, so "
              "that writing the one switches the other: move one of the two blocks.");
    setStarts(300, 310, 300);
    EXPECT_EQ(found(), (Found{"address map address-overlap", "address map address-overlap"}));
    setStarts(300, 360, 300);
    EXPECT_EQ(found(), Found{});
}

TEST_F(CheckedProject, RegularMessagesFollowTheEmergencyMessages) {
    project.RegularMessage = 400;
    EXPECT_EQ(found(), Found{"address map regular-start"});
    EXPECT_EQ(sentence(),
              "Regular messages begin at 400, but no file keeps that: on the display they begin at 320, "
              "20 after the emergency messages. Set their start to 320.");
    project.AlertMessage = 380;
    EXPECT_EQ(found(), Found{});
}

TEST_F(CheckedProject, DefaultsOfFloatsAreNumbersThatFit) {
    FloatVariable& variable = project.RegVar[2];
    for (const char* text : {"1.5", " -3 ", "+2", "1e2", "99.5", ".5", "7."}) {
        variable.defaultValue = text;
        EXPECT_EQ(found(), Found{}) << text;
    }
    for (const char* text :
         {"", "abc", "1.5x", "1 5", "1,5", "0x10", "nan", "--1", "-", ".", "10000", "-1000", "1e99"}) {
        variable.defaultValue = text;
        EXPECT_EQ(found(), Found{"RegVar3 bad-default"}) << text;
    }
    variable.defaultValue = "12abc";
    EXPECT_EQ(sentence(),
              "The default value \"12abc\" is not a number, so that the display begins with 12.000: "
              "write a number, such as 12.5.");
    variable.defaultValue = "10000";
    EXPECT_EQ(sentence(),
              "The default value \"10000\" does not fit into a width of 7 with precision 3, so that the "
              "display begins with stars: choose a greater width or a smaller number.");
}

TEST_F(CheckedProject, DefaultsOfBooleansAreZeroOrOne) {
    for (const char* text : {"0", "1", " 1 "}) {
        project.CoilVar[31].defaultValue = text;
        EXPECT_EQ(found(), Found{}) << text;
    }
    for (const char* text : {"", "2", "01", "1.0", "ON", "-1"}) {
        project.CoilVar[31].defaultValue = text;
        EXPECT_EQ(found(), Found{"CoilVar32 bad-default"}) << text;
    }
    project.CoilVar[31].defaultValue = "2";
    EXPECT_EQ(sentence(),
              "The default value \"2\" is neither 0 nor 1; the display takes it for ON: write 0 or 1.");
}

TEST_F(CheckedProject, FormatsAreThoseTheDisplayCanShow) {
    FloatVariable& variable = project.RegVar[0];
    const auto format = [&](const char* width, const char* precision) {
        variable.width = width;
        variable.precision = precision;
        variable.defaultValue = "0";
        return found();
    };
    for (const char* width : {"3", "4", "5", "6", "7"})
        for (const char* precision : {"0", "1"})
            EXPECT_EQ(format(width, precision), Found{}) << width << precision;
    EXPECT_EQ(format("2", "0"), Found{});
    EXPECT_EQ(format("8", "1"), Found{});
    EXPECT_EQ(format("8", "3"), Found{});
    EXPECT_EQ(format("8", "0"), Found{"RegVar1 bad-format"});
    EXPECT_EQ(sentence(), "The display cannot show precision 0 in a width of 8: set the precision to 1.");
    EXPECT_EQ(format("2", "1"), (Found{"RegVar1 bad-default", "RegVar1 bad-format"}));
    for (const char* width : {"1", "9", "", "x", "7.5"})
        EXPECT_EQ(format(width, "0").back(), "RegVar1 bad-format") << width;
    for (const char* precision : {"4", "-1", "", "x"})
        EXPECT_EQ(format("8", precision), Found{"RegVar1 bad-format"}) << precision;
    EXPECT_EQ(format("9", "4"), (Found{"RegVar1 bad-format", "RegVar1 bad-format"}));
    format("9", "0");
    EXPECT_EQ(sentence(),
              "The display does not support width \"9\" and may use another: choose a width from 2 to 8.");
    format("7", "4");
    EXPECT_EQ(sentence(),
              "The display does not support precision \"4\" and may use another: choose a precision "
              "from 0 to 3.");
}

TEST_F(CheckedProject, NotesNameVariablesThatAreSetUpAndNotShown) {
    project.RegVar[4].defaultValue = "1";
    project.RegVar[5].defaultValue = "1";
    project.CoilVar[6].onText = "RUN";
    project.ALTMSG[0] = "DISPVARS 0 0 RED BLACK regvar6\r\n";
    EXPECT_EQ(found(), Found{});
    EXPECT_EQ(found(Notes::Included), (Found{"RegVar5 not-in-use", "CoilVar7 not-in-use"}));
    const Findings findings = checkProject(project, bitmaps, 128, Notes::Included);
    EXPECT_EQ(findings.counts.notes, 2U);
    EXPECT_EQ(findings.list[0].text,
              "No message shows RegVar5, though its settings were changed: show it with "
              "DISPVAR, or ignore this note.");
    EXPECT_EQ(findings.list[0].rule().severity, Severity::Note);
    // Only lines that the display takes count.
    project.STDMSG[0] = "DISPVAR 0 0 RED RegVar5";
    EXPECT_EQ(found(Notes::Included),
              (Found{"RegVar5 not-in-use", "CoilVar7 not-in-use", "STDMSG1 bad-argument"}));
}

TEST_F(CheckedProject, FindingsAreKnownAgainThoughTheyMoved) {
    const auto findings = [&](const std::string& script) {
        project.STDMSG[2] = script;
        return checkProject(project, bitmaps, 128);
    };
    const auto lineNow = [&](const Finding& earlier, const std::string& script) {
        const Findings now = findings(script);
        const Finding* const same = sameFinding(now.list, earlier);
        return same == nullptr ? 0 : same->place.line;
    };
    project.STDMSG[1] = "TXET";
    const std::string wrong = "TEXT 0 0 RED RED \"a\"\n";
    const Findings before = findings("TXET\n" + wrong + wrong + "HELLO");
    ASSERT_EQ(before.list.size(), 5U);
    EXPECT_EQ(sameFinding(before.list, before.list[1]), &before.list[1]);
    EXPECT_EQ(lineNow(before.list[1], "CLEAR\nHELLO\nTXET"), 3U);
    EXPECT_EQ(lineNow(before.list[1], "CLEAR\nHELLO"), 0U);
    EXPECT_EQ(lineNow(before.list[1], "TXETS"), 1U); // another word at its place
    EXPECT_EQ(lineNow(before.list[3], "CLEAR\n" + wrong), 2U);
    EXPECT_EQ(lineNow(before.list[3], wrong + "CLEAR\nCLEAR\n" + wrong), 4U);
    // The same word farther away is more like it than another one at its place.
    EXPECT_EQ(lineNow(before.list[1], "TXETS\nCLEAR\nTXET"), 3U);
    EXPECT_EQ(lineNow(before.list[1], "TXET\nCLEAR\nTXET"), 1U);
    EXPECT_EQ(sameFinding({}, before.list[1]), nullptr);
}

TEST_F(CheckedProject, FindingsStandInTheOrderOfTheItems) {
    project.RegularMessage = 1;
    project.RegVar[0].defaultValue = project.RegVar[9].defaultValue = "x";
    project.CoilVar[0].defaultValue = "x";
    for (std::string* text :
         {&project.STDMSG[0], &project.STDMSG[39], &project.ALTMSG[0], &project.ALTMSG[19]})
        *text = "x";
    EXPECT_EQ(found(), (Found{"address map regular-start", "RegVar1 bad-default", "RegVar10 bad-default",
                              "CoilVar1 bad-default", "STDMSG1 unknown-command", "STDMSG40 unknown-command",
                              "ALTMSG1 unknown-command", "ALTMSG20 unknown-command"}));
}

TEST_F(CheckedProject, FindingsBeyondTheListAreCounted) {
    for (std::string& text : project.STDMSG)
        for (int i = 0; i < 30; ++i)
            text += "\r\nx";
    const Findings findings = checkProject(project, bitmaps, 128);
    EXPECT_EQ(findings.list.size(), maximumFindings);
    EXPECT_EQ(findings.counts.errors, 1200U);
    EXPECT_EQ(findings.notListed(), 200U);
    EXPECT_EQ(findings.list.back().place.item, named("STDMSG34"));
}

TEST_F(CheckedProject, AListThatIsJustFullStaysInOrder) {
    for (std::string& text : project.STDMSG)
        for (int i = 0; i < 25; ++i)
            text += "\r\nTEXT 0 0 RED RED \"a\"";
    project.STDMSG[39].replace(project.STDMSG[39].rfind("TEXT"), std::string::npos, "x");
    const Findings full = checkProject(project, bitmaps, 128);
    ASSERT_EQ(full.list.size(), maximumFindings);
    EXPECT_EQ(full.notListed(), 0U);
    EXPECT_EQ(full.list.front().place.item, named("STDMSG1"));
    EXPECT_EQ(full.list.back().code, Code::UnknownCommand);
    project.ALTMSG[0] = "x";
    const Findings more = checkProject(project, bitmaps, 128);
    ASSERT_EQ(more.list.size(), maximumFindings);
    EXPECT_EQ(more.notListed(), 1U);
    EXPECT_EQ(more.list[0].place.item, named("STDMSG40"));
    EXPECT_EQ(more.list[1].place.item, named("ALTMSG1"));
}

TEST_F(CheckedProject, ErrorsComeFirstWhereTheListHasNoRoomForAll) {
    for (std::string& text : project.STDMSG)
        for (int i = 0; i < 30; ++i)
            text += "\r\nTEXT 0 0 RED RED \"a\"";
    project.STDMSG[1] += "\r\nx";
    project.ALTMSG[19] = "x\r\nx";
    const Findings findings = checkProject(project, bitmaps, 128);
    ASSERT_EQ(findings.list.size(), maximumFindings);
    EXPECT_EQ(findings.notListed(), 203U);
    EXPECT_EQ(findings.list[0].place.item, named("STDMSG2"));
    EXPECT_EQ(findings.list[2].place, (Place{named("ALTMSG20"), 2, 1, 1}));
    EXPECT_EQ(findings.list[3].place.item, named("STDMSG1"));
    EXPECT_EQ(findings.list.back().place.item, named("STDMSG34"));
}

class RepeatedCheck : public CheckedProject {
protected:
    std::size_t lookedAt() {
        const Findings findings = check.check(project, bitmaps, columns);
        EXPECT_EQ(findings, checkProject(project, bitmaps, columns));
        return check.itemsLookedAt();
    }

    ProjectCheck check;
    int columns = 128;
};

TEST_F(RepeatedCheck, LooksAtChangedItemsOnly) {
    EXPECT_EQ(lookedAt(), 157U);
    EXPECT_EQ(lookedAt(), 0U);
    project.STDMSG[3] = "x";
    EXPECT_EQ(lookedAt(), 1U);
    project.AnalogInput = 200;
    EXPECT_EQ(lookedAt(), 1U);
    project.CoilVar[0].defaultValue = "x";
    EXPECT_EQ(lookedAt(), 1U);
    EXPECT_EQ(lookedAt(), 0U);
}

TEST_F(RepeatedCheck, LooksAgainAtMessagesThatShowWhatChanged) {
    project.STDMSG[0] = "DISPVAR 0 0 RED BLACK RegVar1";
    project.STDMSG[1] = "DISPVAR 0 0 RED BLACK CoilVar1";
    project.ALTMSG[0] = "IMG 0 0 RED BLACK pump.bmp";
    lookedAt();
    project.RegVar[0].width = "17";
    EXPECT_EQ(lookedAt(), 2U);
    project.RegVar[1].width = "6";
    EXPECT_EQ(lookedAt(), 1U);
    project.CoilVar[0].offText = std::string(20, 'x');
    EXPECT_EQ(lookedAt(), 2U);
    bitmaps.store("pump.bmp", pictureBytes(8, 8));
    EXPECT_EQ(lookedAt(), 1U);
    EXPECT_EQ(lookedAt(), 0U);
    columns = 64;
    EXPECT_EQ(lookedAt(), 60U);
}

} // namespace
} // namespace orvista
