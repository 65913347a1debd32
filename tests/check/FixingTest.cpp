#include "check/Fixing.h"
#include "check/FixRun.h"
#include "tests/check/ExampleProject.h"
#include "tests/check/ScriptFindings.h"
#include "tests/support/NamedItem.h"
#include "tests/support/StoredBitmaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

using namespace std::string_literals;

/// What mends each code, written out.
namespace orvista {
namespace {

/// By caption, the message as it is afterwards.
using Mended = std::vector<std::pair<std::string, std::string>>;

/// Bitmaps in memory whose names are known.
class NamedBitmaps final : public BitmapProvider {
public:
    explicit NamedBitmaps(const std::vector<std::string>& names) : names_(names) {
        for (const std::string& name : names)
            stored_.store(name, pictureBytes(16, 16));
        stored_.store("plan.bmp", pictureBytes(100, 16));
    }
    FoundBitmap bitmap(std::string_view name) const override { return stored_.bitmap(name); }
    std::vector<std::string> names() const override { return names_; }

private:
    std::vector<std::string> names_;
    StoredBitmaps stored_;
};

class FixingTest : public testing::Test {
protected:
    /// What the fixes of the message's findings of a code make of it.
    Mended mended(const std::string& script, const std::string& code) {
        project.STDMSG[2] = script;
        const Item message = named("STDMSG3");
        Fixing fixing(project, bitmaps, 128);
        Mended all;
        for (const Finding& finding : std::vector(fixing.findingsOf(message))) {
            if (finding.rule().name != code)
                continue;
            for (const Fix& fix : fixing.fixesOf(finding)) {
                Project after = project;
                applyChanges(after, changesOf(project, fix));
                all.emplace_back(fix.caption, after.STDMSG[2]);
            }
        }
        return all;
    }
    /// The same of a variable, its texts parted by blanks.
    Mended mendedVariable(const std::string& name) {
        const Item variable = named(name);
        Fixing fixing(project, bitmaps, 128);
        Mended all;
        for (const Finding& finding : std::vector(fixing.findingsOf(variable)))
            for (const Fix& fix : fixing.fixesOf(finding)) {
                Project after = project;
                applyChanges(after, changesOf(project, fix));
                std::string texts;
                for (const std::string& text : textsOf(after, variable))
                    texts += (texts.empty() ? "" : " ") + text;
                all.emplace_back(fix.caption, texts);
            }
        return all;
    }

    Project project;
    NamedBitmaps bitmaps{{"Pump 1.bmp", "later.bmp", "pump.BMP", "ST\xD6RUNG.bmp"}};
};

TEST_F(FixingTest, ATextThatIsCutLeavesOrShrinksOrMoves) {
    EXPECT_EQ(mended("CLEAR\r\nTEXT 0 0 RED BLACK \"Emergency stop pump\"\r\nACT STILL 3000", "text-cut"),
              (Mended{{"Let the page leave with OUT GO-LEFT",
                       "CLEAR\r\nTEXT 0 0 RED BLACK \"Emergency stop pump\"\r\nACT STILL 3000\r\n"
                       "OUT GO-LEFT 1 50"},
                      {"Write it in the small font",
                       "CLEAR\r\nTEXTS 0 5 RED BLACK \"Emergency stop pump\"\r\nACT STILL 3000"}}));
    EXPECT_EQ(mended("TEXT 100 0 RED BLACK \"Pump\"\nOUT FADE 25 \nCLEAR", "text-cut"),
              (Mended{{"Let the page leave with OUT GO-LEFT",
                       "TEXT 100 0 RED BLACK \"Pump\"\nOUT GO-LEFT 1 50 \nCLEAR"},
                      {"Write it in the small font", "TEXTS 100 5 RED BLACK \"Pump\"\nOUT FADE 25 \nCLEAR"},
                      {"Move it left to 96", "TEXT 96 0 RED BLACK \"Pump\"\nOUT FADE 25 \nCLEAR"}}));
}

TEST_F(FixingTest, APageThatSaidNothingOfItsTimeIsHeldAsLong) {
    EXPECT_EQ(mended("IMG 40 0 RED BLACK plan.bmp", "bitmap-cut"),
              (Mended{{"Let the page leave with OUT GO-LEFT",
                       "IMG 40 0 RED BLACK plan.bmp\r\nACT STILL 1000\r\nOUT GO-LEFT 1 50"},
                      {"Move it left to 28", "IMG 28 0 RED BLACK plan.bmp"}}));
    EXPECT_EQ(
        mended("IMG -8 0 RED BLACK plan.bmp\nACT STILL 1\nOUT GO-UP 2 25\nCLEAR", "bitmap-cut"),
        (Mended{{"Let the page leave with OUT GO-RIGHT",
                 "IMG -8 0 RED BLACK plan.bmp\nACT STILL 1\nOUT GO-RIGHT 1 25\nCLEAR"},
                {"Move it right to 0", "IMG 0 0 RED BLACK plan.bmp\nACT STILL 1\nOUT GO-UP 2 25\nCLEAR"}}));
}

TEST_F(FixingTest, ValuesKeepTheirBlanks) {
    const std::string rest = "\r\nACT STILL 1";
    EXPECT_EQ(mended("TEXT 48 0 RED BLACK \"Level        m\"\r\nDISPVAR 96 0 RED BLACK RegVar1" + rest,
                     "field-cut"),
              (Mended{{"Let the page leave with OUT GO-LEFT",
                       "TEXT 48 0 RED BLACK \"Level        m\"\r\nDISPVAR 96 0 RED BLACK RegVar1" + rest +
                           "\r\nOUT GO-LEFT 1 50"},
                      {"Write this line in the small font",
                       "TEXTS 48 5 RED BLACK \"Level        m\"\r\nDISPVARS 84 5 RED BLACK RegVar1" + rest},
                      {"Move it left to 64",
                       "TEXT 16 0 RED BLACK \"Level        m\"\r\nDISPVAR 64 0 RED BLACK RegVar1" + rest}}));
}

TEST_F(FixingTest, ThereIsNoMoveOntoSomethingElse) {
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"Level of tank\"\nTIME 104 0 RED BLACK \nOUT GO-LEFT 1 50\n"
                     "TEXT 0 0 RED BLACK \"Level of tank\"\nTEXT 112 0 RED BLACK \"full\"\nACT STILL 1",
                     "text-cut")
                  .size(),
              2U);
}

TEST_F(FixingTest, WhatIsKeptIsNotMended) {
    project.STDMSG[2] = "TEXT 0 0 RED BLACK \"a     b       c\"\nDISPVAR 8 0 RED BLACK RegVar1\n"
                        "DISPVAR 56 0 RED BLACK RegVar2";
    project.RegVar[0].precision = "1";
    const auto captions = [&](std::vector<Item> kept) {
        Fixing fixing(project, bitmaps, 128, std::move(kept));
        std::vector<std::string> texts;
        for (const Finding& finding : std::vector(fixing.findingsOf(named("STDMSG3"))))
            for (const Fix& fix : fixing.fixesOf(finding))
                texts.push_back(fix.caption);
        return texts;
    };
    // The message is mended by what it shows, too.
    EXPECT_EQ(captions({named("STDMSG3")}), std::vector<std::string>{"Make RegVar1 5 wide"});
    EXPECT_EQ(captions({named("RegVar1")}), std::vector<std::string>{});
    EXPECT_EQ(captions({named("RegVar2")}), std::vector<std::string>{"Make RegVar1 5 wide"});
}

TEST_F(FixingTest, AValueGetsItsBlanksOrIsMadeNarrower) {
    EXPECT_EQ(mended("CLEAR\nTEXT 0 0 RED BLACK \"Level   m\"\nDISPVAR 48 0 RED BLACK RegVar1", "field-gap"),
              (Mended{{"Leave 7 blanks",
                       "CLEAR\nTEXT 0 0 RED BLACK \"Level        m\"\nDISPVAR 48 0 RED BLACK RegVar1"}}));
    project.RegVar[0].precision = "1";
    const std::string twoValues = "TEXT 0 0 RED BLACK \"a     b       c\"\nDISPVAR 8 0 RED BLACK "
                                  "RegVar1\nDISPVAR 56 0 RED BLACK RegVar2";
    EXPECT_EQ(mended(twoValues, "field-gap"), (Mended{{"Make RegVar1 5 wide", twoValues}}));
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"a     b   c\"\nDISPVAR 8 0 RED BLACK RegVar1\n"
                     "TEXT 96 0 RED BLACK \"d\"",
                     "field-gap"),
              (Mended{{"Leave 7 blanks", "TEXT 0 0 RED BLACK \"a       b   c\"\n"
                                         "DISPVAR 8 0 RED BLACK RegVar1\nTEXT 112 0 RED BLACK \"d\""},
                      {"Make RegVar1 5 wide", "TEXT 0 0 RED BLACK \"a     b   c\"\n"
                                              "DISPVAR 8 0 RED BLACK RegVar1\nTEXT 96 0 RED BLACK \"d\""}}));
}

TEST_F(FixingTest, WhatFollowsAValueMovesThoughItIsDrawnBefore) {
    EXPECT_EQ(mended("TEXT 96 0 RED BLACK \"d\"\nTEXT 0 0 RED BLACK \"a     b   c\"\n"
                     "DISPVAR 8 0 RED BLACK RegVar1",
                     "field-gap")
                  .at(0),
              std::pair("Leave 7 blanks"s,
                        "TEXT 112 0 RED BLACK \"d\"\nTEXT 0 0 RED BLACK \"a       b   c\"\n"
                        "DISPVAR 8 0 RED BLACK RegVar1"s));
}

TEST_F(FixingTest, WhatFollowsAValueStaysWhereThereIsNoRoomToMoveIt) {
    const std::string value = "DISPVAR 48 0 RED BLACK RegVar1\nTEXT 112 0 RED BLACK \"on\"";
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"Level   m\"\n" + value, "field-gap"),
              (Mended{{"Leave 7 blanks", "TEXT 0 0 RED BLACK \"Level        m\"\n" + value}}));
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"Level   km\"\n" + value, "field-gap"), Mended{});
}

/// A tall text makes way for a small value, and must not run into a small text below the value.
TEST_F(FixingTest, NoBlanksAreLeftThatPutOneTextOntoAnother) {
    const std::string value = "\nDISPVARS 40 0 RED BLACK RegVar1";
    const std::string below = "\nTEXTS 96 8 RED BLACK \"x\"";
    const std::string behind = "\nTEXT 80 0 RED BLACK \"t\"";
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"Level   m\"" + value + below, "field-gap"),
              (Mended{{"Leave 7 blanks", "TEXT 0 0 RED BLACK \"Level      m\"" + value + below}}));
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"Level   mm\"" + value + below, "field-gap"), Mended{});
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"Level   m\"" + value + behind, "field-gap"),
              (Mended{{"Leave 7 blanks",
                       "TEXT 0 0 RED BLACK \"Level      m\"" + value + "\nTEXT 104 0 RED BLACK \"t\""}}));
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"Level   m\"" + value + behind + "\nTEXTS 108 8 RED BLACK \"x\"",
                     "field-gap"),
              Mended{});
    // Blanks lie on nothing.
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"Level   m  \"" + value + below, "field-gap").size(), 1U);
}

TEST_F(FixingTest, AVariableStaysAsWideAsAnotherMessageNeedsIt) {
    project.RegVar[0].precision = "1";
    project.ALTMSG[0] = "TEXT 0 0 RED BLACK \"a  b\"\nDISPVAR 8 0 RED BLACK RegVar1";
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"a     b\"\nDISPVAR 8 0 RED BLACK RegVar1", "field-gap").size(),
              1U);
    project.ALTMSG[0] = clearScript;
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"a     b\"\nDISPVAR 8 0 RED BLACK RegVar1", "field-gap").size(),
              2U);
}

TEST_F(FixingTest, WhatCoversAValueBeginsBehindIt) {
    EXPECT_EQ(mended("DISPVAR 0 0 RED BLACK RegVar1\nDISPVAR 48 0 RED BLACK CoilVar1", "field-overlap"),
              (Mended{{"Begin it at 56", "DISPVAR 0 0 RED BLACK RegVar1\nDISPVAR 56 0 RED BLACK CoilVar1"}}));
    EXPECT_EQ(mended("DISPVAR 0 0 RED BLACK RegVar1\nDISPVAR 48 0 RED BLACK CoilVar1\n"
                     "TEXT 72 0 RED BLACK \"m\"",
                     "field-overlap"),
              (Mended{{"Begin it at 56 and move what follows",
                       "DISPVAR 0 0 RED BLACK RegVar1\nDISPVAR 56 0 RED BLACK CoilVar1\n"
                       "TEXT 80 0 RED BLACK \"m\""}}));
}

TEST_F(FixingTest, WordsAreWrittenRightWhereOneIsNearest) {
    EXPECT_EQ(mended(" txet 0 0 RED BLACK \"a\"", "unknown-command"),
              (Mended{{"Write TEXT", " TEXT 0 0 RED BLACK \"a\""}}));
    EXPECT_EQ(mended("\xEF\xBB\xBF"
                     "CLAR",
                     "unknown-command"),
              (Mended{{"Write CLEAR", "\xEF\xBB\xBF"
                                      "CLEAR"}}));
    EXPECT_EQ(mended("TEXTT 0 0 RED BLACK \"a\"", "unknown-command"), Mended{}); // TEXT or TEXTS
    EXPECT_EQ(mended("HELLO", "unknown-command"), Mended{});
    EXPECT_EQ(mended("TEXT 0 0 GREN BLAC \"a\"\nTEXT 0 0 RED BLAC \"a\"", "bad-argument"),
              (Mended{{"Write BLACK", "TEXT 0 0 GREN BLAC \"a\"\nTEXT 0 0 RED BLACK \"a\""}}));
    EXPECT_EQ(mended("OUT GO-LEF 1 50", "bad-argument"), (Mended{{"Write GO-LEFT", "OUT GO-LEFT 1 50"}}));
    EXPECT_EQ(mended("ACT STIL 500", "bad-argument"), (Mended{{"Write STILL", "ACT STILL 500"}}));
    EXPECT_EQ(mended("ACT STILL", "bad-argument"), Mended{});
    EXPECT_EQ(mended("TEXT 0 0 PINK BLACK \"a\"", "bad-argument"), Mended{});
}

TEST_F(FixingTest, BitmapsAreNamedAsTheirFilesAre) {
    EXPECT_EQ(mended("IMG 0 0 RED BLACK pump.png", "missing-bitmap"),
              (Mended{{"Write \"pump.BMP\"", "IMG 0 0 RED BLACK pump.BMP"}}));
    EXPECT_EQ(mended("IMG 0 0 RED BLACK PUMP1", "missing-bitmap"),
              (Mended{{"Write \"Pump 1.bmp\"", "IMG 0 0 RED BLACK Pump 1.bmp"}}));
    EXPECT_EQ(mended("IMG 0 0 RED BLACK st\xF6rung.bmp", "missing-bitmap"),
              (Mended{{"Write \"ST\u00D6RUNG.bmp\"", "IMG 0 0 RED BLACK ST\xD6RUNG.bmp"}}));
    EXPECT_EQ(mended("IMG 0 0 RED BLACK pump2.bmp", "missing-bitmap"), Mended{});
    EXPECT_EQ(mended("IMG 0 0 RED BLACK .bmp", "missing-bitmap"), Mended{});
}

TEST_F(FixingTest, ReservedLinesGoAndLostMessagesBecomeClear) {
    EXPECT_EQ(mended("CLEAR\r\nENDMSG\r\nACT STILL 1", "reserved-line"),
              (Mended{{"Delete the line", "CLEAR\r\nACT STILL 1"}}));
    EXPECT_EQ(mended("CLEAR\r\n[CONFIG]", "reserved-line"), (Mended{{"Delete the line", "CLEAR"}}));
    EXPECT_EQ(mended("DEFMSG", "reserved-line"), (Mended{{"Delete the line", "CLEAR"}}));
    EXPECT_EQ(mended("CLEAR\nENDMSG\nENDMSG", "reserved-line"),
              (Mended{{"Delete the line", "CLEAR\nENDMSG"}, {"Delete the line", "CLEAR\nENDMSG"}}));
    EXPECT_EQ(mended(" \r\n ", "lost-message"), (Mended{{"Write CLEAR", "CLEAR"}}));
}

TEST_F(FixingTest, VariablesGetWhatTheDisplayTakesThemFor) {
    project.RegVar[0] = {"RegVar1", "12,5", "9", "5"};
    EXPECT_EQ(mendedVariable("RegVar1"), (Mended{{"Set the default to 12", "12 9 5"},
                                                 {"Set the width to 8 and the precision to 3", "12,5 8 3"},
                                                 {"Set the width to 8 and the precision to 3", "12,5 8 3"}}));
    project.RegVar[1] = {"RegVar2", "1", "2", "1"};
    EXPECT_EQ(mendedVariable("RegVar2"), (Mended{{"Set the precision to 0", "1 2 0"}}));
    project.RegVar[2] = {"RegVar3", "1e9", "7", "3"};
    EXPECT_EQ(mendedVariable("RegVar3"), Mended{});
    project.CoilVar[0].defaultValue = "yes";
    project.CoilVar[1].defaultValue = "1e999";
    EXPECT_EQ(mendedVariable("CoilVar1"), (Mended{{"Set the default to 0", "0 ON OFF"}}));
    EXPECT_EQ(mendedVariable("CoilVar2"), Mended{});
}

TEST_F(FixingTest, TheSameNumberWrittenPlainlyIsSure) {
    project.CoilVar[0].defaultValue = "1.0";
    project.CoilVar[1].defaultValue = "2";
    Fixing fixing(project, bitmaps, 128);
    EXPECT_TRUE(fixing.fixesOf(fixing.findingsOf(named("CoilVar1")).at(0)).at(0).isSure);
    EXPECT_FALSE(fixing.fixesOf(fixing.findingsOf(named("CoilVar2")).at(0)).at(0).isSure);
}

TEST_F(FixingTest, AFixChangesNothingUntilItIsMade) {
    project.STDMSG[2] = "DISPVAR 0 0 RED BLACK RegVar1\nDISPVAR 48 0 RED BLACK CoilVar1";
    Fixing fixing(project, bitmaps, 128);
    const Finding finding = fixing.findingsOf(named("STDMSG3")).at(0);
    EXPECT_EQ(fixing.fixesOf(finding).size(), 1U);
    EXPECT_EQ(fixing.project().STDMSG, project.STDMSG);
    EXPECT_EQ(fixing.findingsOf(named("STDMSG3")), std::vector{finding});
}

/// Beyond the findings that are listed, too, a fix must add none.
TEST_F(FixingTest, FindingsThatAreNotListedCount) {
    std::string script = "TXT 0 0 RED BLACK \"a\"\r\n";
    for (int i = 0; i < 3000; ++i)
        script += "x\r\n";
    EXPECT_EQ(mended(script, "unknown-command").size(), 1U);
    std::string page = "CLEA\r\nTEXT 0 0 RED BLACK \"a\"\r\nACT STILL 0\r\n";
    for (int i = 0; i < 3000; ++i)
        page += "x\r\n";
    EXPECT_EQ(mended("TEXT 0 0 RED BLACK \"a\"\r\nACT STILL 1\r\n" + page, "unknown-command").size(), 0U);
}

TEST_F(FixingTest, EveryRuleThatSaysSoMendsItsExample) {
    for (const Rule& rule : rules()) {
        const ExampleProject made(rule.example);
        if (made.projectFile)
            continue;
        const NamedBitmaps known({"pump.bmp"});
        const BitmapProvider& bitmaps =
            rule.code == Code::MissingBitmap ? static_cast<const BitmapProvider&>(known) : made.bitmaps;
        Fixing fixing(made.project, bitmaps, 128);
        const auto mended = mendAll(fixing, {{rule.code}, {}}, [](std::size_t) { return true; });
        const bool knowsBetter = rule.code == Code::BadArgument || rule.code == Code::MissingBitmap;
        EXPECT_EQ(mended.empty(), rule.fixes == Fixes::None || knowsBetter) << rule.name;
    }
}

} // namespace
} // namespace orvista
