#include "tests/check/Reopened.h"
#include "tests/check/ScriptFindings.h"
#include "tests/support/NamedItem.h"
#include "tests/support/StoredBitmaps.h"

#include "check/FitTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

/// For each code scripts that have it, and others just beside that have not.
namespace orvista {
namespace {

using Found = std::vector<std::string>;

class MessageCheck : public testing::Test {
protected:
    MessageCheck() {
        bitmaps.store("pump.bmp", pictureBytes(16, 16));
        bitmaps.store("colour.bmp", pictureBytes(16, 16, false));
        bitmaps.store("wide.bmp", pictureBytes(200, 16));
        bitmaps.store("high.bmp", pictureBytes(16, 40));
        bitmaps.store("broken.bmp", "BM");
        bitmaps.store("pump.png", pictureBytes(16, 16));
    }

    Found found(const std::string& script, int columns = 128) const {
        return placesAndCodes(checkMessage(named("STDMSG12"), script, project, bitmaps, columns));
    }
    std::string sentence(const std::string& script) const {
        const Findings findings = checkMessage(named("STDMSG12"), script, project, bitmaps, 128);
        EXPECT_EQ(findings.list.size(), 1U) << script;
        return findings.list.empty() ? std::string() : findings.list[0].text;
    }

    Project project;
    StoredBitmaps bitmaps;
};

#define EXPECT_FINDING(script, finding) EXPECT_EQ(found(script), Found{finding}) << (script)
#define EXPECT_CLEAN(script) EXPECT_EQ(found(script), Found{}) << (script)

TEST_F(MessageCheck, UnknownCommands) {
    EXPECT_FINDING("CLEAR\r\n  HELLO WORLD", "2:3 unknown-command");
    EXPECT_FINDING("TEXT\t0 0 RED BLACK \"a\"", "1:1 unknown-command");
    EXPECT_CLEAN("CLEAR\r\n  clear\r\n\r\n   \r\n");
    EXPECT_EQ(sentence("HELLO"),
              "The display will skip this line: \"HELLO\" is not a command. Correct or delete it.");
    EXPECT_EQ(
        sentence(std::string(50, '\xC9') + "\x01"), "The display will skip this line: \"" + [] {
            std::string text;
            for (int i = 0; i < 40; ++i)
                text += "É";
            return text;
        }() + "…\" is not a command. Correct or delete it.");
    EXPECT_EQ(sentence("TEXT\t0\x81"),
              "The display will skip this line: \"TEXT<a tab>0<a control character>\" "
              "is not a command. Correct or delete it.");
}

TEST_F(MessageCheck, BadArguments) {
    EXPECT_FINDING("TEXT 0 0 PINK BLACK \"a\"", "1:10 bad-argument");
    EXPECT_FINDING("TEXT 0 0 RED BLACK \"a", "1:20 bad-argument");
    EXPECT_FINDING("DISPVAR 0 0 RED BLACK Pump", "1:23 bad-argument");
    EXPECT_FINDING("ACT STILL", "1:10 bad-argument");
    EXPECT_FINDING("IN GO-LEFT 0 50", "1:12 bad-argument");
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \"a\"\nACT STILL 1\nIN GO-LEFT 1 50");
    EXPECT_EQ(sentence("TEXT 0 0 PINK BLACK \"a\""),
              "The display skips this line, because \"PINK\" is not a foreground colour: write RED, GREEN, "
              "ORANGE or BLACK.");
    EXPECT_EQ(sentence("ACT STILL"), "The display skips this line, because a time is missing: write how many "
                                     "milliseconds the page stands still, such as 3000.");
}

TEST_F(MessageCheck, SaysWhatStandsInThePlaceOfEachArgument) {
    const std::pair<const char*, const char*> scripts[] = {
        {"TEXT a 0 RED BLACK \"t\"",
         "\"a\" is not an x position: write how many dots it is from the left edge."},
        {"TEXT 0 b RED BLACK \"t\"", "\"b\" is not a y position: write how many dots it is from the top."},
        {"TEXT 0 0 RED", "a background colour is missing: write RED, GREEN, ORANGE or BLACK."},
        {"TEXT 0 0 RED BLACK t", "\"t\" is not a text between double quotes: write the text, with a double "
                                 "quote before and after it."},
        {"IMG 0 0 RED BLACK",
         "the name of a bitmap is missing: write the name of a .bmp file of the project's folder."},
        {"DISPVAR 0 0 RED BLACK Pump",
         "\"Pump\" is not a variable: write RegVar1 to RegVar64 or CoilVar1 to CoilVar32."},
        {"OUT JUMP", "\"JUMP\" is not an effect: write GO-LEFT, GO-RIGHT, GO-UP, GO-DOWN or FADE."},
        {"ACT WAIT 1", "\"WAIT\" is not a special effect: write STILL or BLINK."},
        {"IN GO-UP 0 50", "\"0\" is not a number of dots to move by: write a whole number from 1."},
        {"IN GO-UP 1", "IN GO-UP needs two numbers, dots and milliseconds: write IN GO-UP 1 50."},
        {" out  go-left", "OUT GO-LEFT needs two numbers, dots and milliseconds: write OUT GO-LEFT 1 50."},
        {"IN GO-UP 1 x",
         "\"x\" is not a speed: write the milliseconds from one move to the next, such as 50."},
        {"IN FADE", "a speed is missing: write the milliseconds from one move to the next, such as 50."},
        {"ACT BLINK x 75", "\"x\" is not a number of blinks: write a whole number, such as 4."},
        {"ACT BLINK 4",
         "a time is missing: write the milliseconds that the page is dark and lit again, such as 75."}};
    for (const auto& [script, problem] : scripts)
        EXPECT_EQ(sentence(script), std::string("The display skips this line, because ") + problem);
}

TEST_F(MessageCheck, VariablesOutOfRange) {
    for (const char* name : {"RegVar65", "RegVar0", "CoilVar33", "coilvar99999999999999999999"})
        EXPECT_FINDING(std::string("DISPVAR 0 0 RED BLACK ") + name, "1:23 variable-range");
    for (const char* name : {"RegVar64", "RegVar1", "CoilVar32", "regvar064"})
        EXPECT_CLEAN(std::string("DISPVAR 0 0 RED BLACK ") + name);
    EXPECT_EQ(sentence("DISPVAR 0 0 RED BLACK RegVar65"),
              "The display skips this line, because there is no variable \"RegVar65\": write RegVar1 to "
              "RegVar64 or CoilVar1 to CoilVar32.");
}

TEST_F(MessageCheck, FullPages) {
    std::string page;
    for (int i = 0; i < 256; ++i)
        page += "TEXT 0 0 RED BLACK \"a\"\n";
    EXPECT_CLEAN(page);
    EXPECT_CLEAN(page + "CLEAR\nTEXT 0 0 RED BLACK \"a\"");
    EXPECT_FINDING(page + " TEXT 0 0 RED BLACK \"a\"", "257:2 page-full");
    EXPECT_EQ(sentence(page + " TEXT 0 0 RED BLACK \"a\""),
              "The display skips this line, because the page draws 256 things already: begin another page "
              "with CLEAR.");
}

TEST_F(MessageCheck, MissingBitmaps) {
    EXPECT_FINDING("IMG 0 0 RED BLACK gone.bmp", "1:19 missing-bitmap");
    EXPECT_FINDING("IMG 0 0 RED BLACK pump.png", "1:19 missing-bitmap");
    EXPECT_CLEAN("IMG 0 0 RED BLACK PUMP.Bmp");
    EXPECT_EQ(found("IMG 0 0 RED BLACK gone.bmp\nIMG 0 0 RED BLACK GONE.bmp"),
              (Found{"1:19 missing-bitmap", "2:19 missing-bitmap"}));
    EXPECT_EQ(
        sentence("IMG 0 0 RED BLACK gone.bmp"),
        "The display draws nothing here, because the project's folder has no bitmap \"gone.bmp\": put it "
        "there or correct the name.");
}

TEST_F(MessageCheck, UnreadableBitmaps) {
    EXPECT_FINDING("CLEAR\nIMG 0 0 RED BLACK broken.bmp", "2:19 unreadable-bitmap");
    EXPECT_CLEAN("CLEAR\nIMG 0 0 RED BLACK pump.bmp");
    EXPECT_EQ(
        sentence("IMG 0 0 RED BLACK broken.bmp"),
        "The display draws nothing here, because the bitmap \"broken.bmp\" is cut short: save it again, "
        "uncompressed and at most 1024 x 64 dots.");
}

TEST_F(MessageCheck, ReservedLines) {
    for (const char* line : {"ENDMSG", "  endmsg later", "DEFMSGX", "DefMsg STDMSG3", "[CONFIG]",
                             "[modbus.adr]", "  [STDMSG.ILM]", "[ALTMSG.ILM]  ", "[ilmvar.def]"}) {
        const std::string column = std::to_string(std::string(line).find_first_not_of(' ') + 1);
        EXPECT_FINDING(std::string("CLEAR\r\n") + line, "2:" + column + " reserved-line");
    }
    for (const char* line : {"ENDMS G", "[CONFIG] x", "[default.pls]", "xENDMSG", "CONFIG"})
        EXPECT_EQ(found(std::string("CLEAR\r\n") + line), Found{"2:1 unknown-command"}) << line;
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \"ENDMSG\"");
    // Only a line that begins so.
    EXPECT_FINDING("\xEF\xBB\xBF"
                   "ENDMSG",
                   "1:4 unknown-command");
}

TEST_F(MessageCheck, ReservedLinesTellWhatOpeningTheProjectMakesOfThem) {
    const auto opened = [&](const std::string& script) {
        for (std::size_t i = 0; i < project.STDMSG.size(); ++i)
            project.STDMSG[i] = "R" + std::to_string(i + 1);
        project.STDMSG[11] = script;
        const Project again = reopened(project);
        return Found{again.STDMSG[10], again.STDMSG[11], again.STDMSG[12], again.STDMSG[13]};
    };
    const auto text = [&](const std::string& script) {
        const Findings findings = checkMessage(named("STDMSG12"), script, project, bitmaps, 128);
        const auto reserved = std::ranges::find(findings.list, Code::ReservedLine, &Finding::code);
        return reserved == findings.list.end() ? std::string() : reserved->text;
    };

    EXPECT_EQ(opened("A\r\nEndMsg now\r\nB"), (Found{"R11\r\n", "A\r\n", "A\r\nB\r\n", "R13\r\n"}));
    EXPECT_EQ(text("A\r\n EndMsg now\r\nB"),
              "When the project is opened again this message ends before this line and the messages after it "
              "get the next number (STDMSG13 becomes STDMSG14), because \"EndMsg now\" ends a message in the "
              "project's files: change the line or delete it.");
    EXPECT_EQ(opened(" \r\nENDMSG\r\nB"), (Found{"R11\r\n", "ENDMSG\r\nB\r\n", "R13\r\n", "R14\r\n"}));
    EXPECT_EQ(
        text(" \r\nENDMSG\r\nB"),
        "This line does nothing here, and \"ENDMSG\" would end this message if anything stood before it: "
        "delete it.");
    EXPECT_EQ(opened("A\r\nDEFMSG X\r\nB"), (Found{"R11\r\n", "B\r\n", "R13\r\n", "R14\r\n"}));
    EXPECT_EQ(text("A\r\nDEFMSG X\r\nB"),
              "When the project is opened again all of this message up to this line is gone, because "
              "\"DEFMSG X\" begins a message in the project's files: change the line or delete it.");
    EXPECT_EQ(opened("A\r\n[ilmvar.DEF]\r\nB"), (Found{"R11\r\n", "CLEAR", "CLEAR", "CLEAR"}));
    EXPECT_EQ(
        text("A\r\n[ilmvar.DEF]\r\nB"),
        "When the project is opened again this message is gone, and others may be gone with it, because "
        "\"[ilmvar.DEF]\" begins a section of the project's files: change the line or delete it.");
    // The first of two ends is a line of the message, the second ends it.
    EXPECT_EQ(opened("ENDMSG\r\nENDMSG"), (Found{"R11\r\n", "ENDMSG\r\n", "ENDMSG\r\n", "R13\r\n"}));
}

TEST_F(MessageCheck, LostMessages) {
    for (const char* script : {" ", "\r\n", "\r\n   \r\n \n", "\r"})
        EXPECT_FINDING(script, "0:0 lost-message");
    EXPECT_CLEAN("");
    EXPECT_CLEAN("\r\nCLEAR");
    EXPECT_EQ(found("\t"), Found{"1:1 unknown-command"});
    project.STDMSG[11] = " \r\n";
    project.STDMSG[12] = "TIME";
    EXPECT_EQ(reopened(project).STDMSG[11], "TIME\r\n");
    EXPECT_EQ(
        sentence(" \r\n"),
        "When the project is opened again this message is gone and the messages after it get the previous "
        "number (STDMSG13 becomes STDMSG12), because it holds nothing but blanks: write CLEAR.");
}

TEST_F(MessageCheck, TheLastMessagesOfAKindHaveNoneOrOneAfterThem) {
    const auto text = [&](const char* item, const std::string& script) {
        const Findings findings = checkMessage(named(item), script, project, bitmaps, 128);
        const std::string& all = findings.list.at(0).text;
        return all.substr(0, all.find(", because"));
    };
    const std::string ends = "When the project is opened again this message ends before this line";
    EXPECT_EQ(text("ALTMSG18", "CLEAR\nENDMSG"),
              ends + " and the messages after it get the next number (ALTMSG19 becomes ALTMSG20)");
    EXPECT_EQ(text("STDMSG39", "CLEAR\nENDMSG"), ends + " and STDMSG40 is gone");
    EXPECT_EQ(text("STDMSG40", "CLEAR\nENDMSG"), ends);
    const std::string gone = "When the project is opened again this message is gone";
    EXPECT_EQ(text("ALTMSG19", " "),
              gone + " and the messages after it get the previous number (ALTMSG20 becomes ALTMSG19)");
    EXPECT_EQ(text("ALTMSG20", " "), gone);
    project.STDMSG[37] = "TIME";
    project.STDMSG[38] = "DATE\r\nENDMSG";
    project.STDMSG[39] = "TIMES";
    const Project again = reopened(project);
    EXPECT_EQ(again.STDMSG[38], "DATE\r\n");
    EXPECT_NE(again.STDMSG[39], "TIMES\r\n");
}

TEST_F(MessageCheck, PlacesReachOverWhatIsMeant) {
    const auto meant = [&](const std::string& script) {
        const Findings findings = checkMessage(named("STDMSG12"), script, project, bitmaps, 128);
        EXPECT_EQ(findings.list.size(), 1U) << script;
        const Place place = findings.list.at(0).place;
        return script.substr(place.column - 1, place.length);
    };
    const std::pair<const char*, const char*> scripts[] = {
        {" TXET 0 0 RED BLACK \"a\"", "TXET"},
        {"TEXT 0 0  PINK BLACK \"a\"", "PINK"},
        {"TEXT 0 0 RED BLACK a b\"", "a b\""},
        {"ACT STILL", ""},
        {"IN GO-LEFT 000 50", "000"},
        {"DISPVAR 0 0 RED BLACK  RegVar065 x", "RegVar065"},
        {"IMG 0 0 RED BLACK  two words.bmp ", "two words.bmp"},
        {"IMG 0 0 RED BLACK broken.bmp", "broken.bmp"},
        {"IMG 0 0 RED BLACK wide.bmp", "wide.bmp"},
        {"  ENDMSG later ", "ENDMSG later"},
        {"TEXT 0 0 RED BLACK \"Emergency stop pump \" x", "ump "},
        {"DISPVAR 80 0 RED BLACK RegVar12 x", "RegVar12"},
        {" TIMES 248 0 RED BLACK ", "TIMES"},
        {"TEXT 0 0 RED  red \"a b\"", "red"}};
    for (const auto& [script, part] : scripts)
        EXPECT_EQ(meant(script), part) << script;
    for (const auto& [line, part] : {std::pair("TEXT 0 0 RED BLACK \"a b\"\nACT STILL 0", "TEXT"),
                                     std::pair("TEXTS 0 0 RED BLACK \"a\"\nACT BLINK 0 1", "TEXTS")})
        EXPECT_EQ(meant(line), part) << line;
    const Findings covered = checkMessage(
        named("STDMSG12"), "TIME 0 0 RED BLACK \nTEXT 0 0 RED BLACK \"a b\"", project, bitmaps, 128);
    EXPECT_EQ(covered.list.at(0).place, (Place{named("STDMSG12"), 2, 21, 3}));
}

TEST_F(MessageCheck, CutTexts) {
    EXPECT_FINDING("TEXT 0 0 RED BLACK \"Emergency stop pump\"\nACT STILL 1000", "1:37 text-cut");
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \"Emergency stop p\"\nACT STILL 1000");
    // Blanks fit anywhere, and so does the gap after a character.
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \"Emergency stop p      \"\nACT STILL 1000");
    EXPECT_CLEAN("TEXTS 123 0 RED BLACK \"1\"");
    EXPECT_FINDING("TEXTS 124 0 RED BLACK \"M\"", "1:24 text-cut");
    EXPECT_CLEAN("TEXTS 124 0 RED BLACK \"1\"");
    EXPECT_FINDING("TEXTS -1 0 RED BLACK \"M\"", "1:23 text-cut");
    EXPECT_CLEAN("TEXTS 0 9 RED BLACK \"M\"");
    EXPECT_FINDING("TEXTS 0 10 RED BLACK \"M\"", "1:23 text-cut");
    // The large font leaves two rows to accents.
    EXPECT_CLEAN("TEXT 0 -2 RED BLACK \"M\"");
    EXPECT_FINDING("TEXT 0 -3 RED BLACK \"M\"", "1:22 text-cut");
    EXPECT_FINDING("TEXT 0 -1 RED BLACK \"M\xC9\"", "1:23 text-cut");
    EXPECT_EQ(found("TEXT 0 0 RED BLACK \"Emergency stop pump\"", 152), Found{});
    EXPECT_EQ(
        sentence("TEXT 0 0 RED BLACK \"Emergency stop pump\""),
        "3 characters do not fit on the panel of 128 x 16 dots and cannot be read: shorten or move the text, "
        "or let the page leave with OUT GO-LEFT.");
    EXPECT_EQ(sentence("TEXT 0 0 RED BLACK \"Emergency stop pu\"").substr(0, 40),
              "1 character does not fit on the panel of");
}

TEST_F(MessageCheck, OnlyAWayOutThatHelpsIsNamed) {
    const auto end = [&](const std::string& script) {
        const std::string text = sentence(script);
        const std::size_t start = text.rfind(": ");
        return start == std::string::npos ? text : text.substr(start + 2);
    };
    EXPECT_EQ(end("TEXT 0 12 RED BLACK \"M\""),
              "shorten or move the text, or let the page leave with OUT GO-UP.");
    EXPECT_EQ(end("TEXT 0 -5 RED BLACK \"M\""),
              "shorten or move the text, or let the page leave with OUT GO-DOWN.");
    EXPECT_EQ(end("TEXT -8 0 RED BLACK \"Mm\""),
              "shorten or move the text, or let the page leave with OUT GO-RIGHT.");
    EXPECT_EQ(end("TEXT 0 12 RED BLACK \"Emergency stop pump\""), "shorten or move the text.");
    EXPECT_EQ(end("IMG 0 0 RED BLACK wide.bmp"),
              "move it or make it smaller, or let the page leave with OUT GO-LEFT.");
    EXPECT_EQ(end("IMG 0 0 RED BLACK high.bmp"),
              "move it or make it smaller, or let the page leave with OUT GO-UP.");
    EXPECT_EQ(end("IMG -80 0 RED BLACK wide.bmp\nIN GO-UP 1 50\nACT STILL 1"),
              "move it or make it smaller, or let the page leave with OUT GO-RIGHT.");
    EXPECT_EQ(end("IMG -20 0 RED BLACK wide.bmp"), "move it or make it smaller.");
    EXPECT_EQ(end("DISPVARS 0 12 RED BLACK RegVar1"),
              "move the field or make it narrower, or let the page leave with OUT GO-UP.");
}

TEST_F(MessageCheck, PagesThatPassWhole) {
    const std::string longText = "TEXT 0 0 RED BLACK \"Emergency stop pump\"\n";
    const std::string low = "TEXT 0 12 RED BLACK \"M\"\n";
    for (const char* effect : {"IN GO-RIGHT 1 50", "OUT GO-LEFT 1 50", "OUT GO-LEFT 16 50"})
        EXPECT_CLEAN(longText + effect);
    for (const char* effect : {"IN GO-LEFT 1 50", "OUT GO-RIGHT 1 50", "IN GO-DOWN 1 50", "OUT GO-UP 1 50",
                               "IN FADE 50", "ACT STILL 1\nOUT GO-LEFT 1 0", "OUT GO-LEFT 500 50"})
        EXPECT_FINDING(longText + effect, "1:37 text-cut");
    for (const char* effect : {"IN GO-DOWN 1 50", "OUT GO-UP 1 50", "OUT GO-UP 4 50"})
        EXPECT_CLEAN(low + effect);
    for (const char* effect : {"IN GO-UP 1 50", "OUT GO-DOWN 1 50", "OUT GO-LEFT 1 50", "OUT GO-UP 16 50"})
        EXPECT_FINDING(low + effect, "1:22 text-cut");
    // What is drawn after the page has entered passes no more.
    EXPECT_FINDING("IN GO-RIGHT 1 50\n" + longText, "2:37 text-cut");
    // What lies left of the panel is seen when the page moves to the right.
    EXPECT_FINDING("TEXT -16 0 RED BLACK \"Mm\"\nOUT GO-LEFT 1 50", "1:23 text-cut");
    EXPECT_CLEAN("TEXT -16 0 RED BLACK \"Mm\"\nOUT GO-RIGHT 1 50");
}

TEST_F(MessageCheck, CutFields) {
    EXPECT_FINDING("DISPVAR 248 0 RED BLACK RegVar1", "1:25 field-cut");
    EXPECT_FINDING("DISPVAR 74 0 RED BLACK RegVar1", "1:24 field-cut");
    // The gap after the last digit needs no room.
    EXPECT_CLEAN("DISPVAR 73 0 RED BLACK RegVar1");
    EXPECT_CLEAN("DISPVAR 74 0 RED BLACK RegVar1\nOUT GO-LEFT 1 50");
    EXPECT_CLEAN("DISPVARS 111 0 RED BLACK CoilVar1");
    EXPECT_FINDING("DISPVARS 112 0 RED BLACK CoilVar1", "1:26 field-cut");
    EXPECT_FINDING("  TIME 66 0 RED BLACK ", "1:3 field-cut");
    EXPECT_CLEAN("TIME 65 0 RED BLACK ");
    EXPECT_FINDING("DATE 50 0 RED BLACK ", "1:1 field-cut");
    EXPECT_CLEAN("DATE 49 0 RED BLACK ");
    EXPECT_EQ(
        sentence("DISPVAR 80 0 RED BLACK RegVar12"),
        "1 of the 7 characters of RegVar12 does not fit on the panel of 128 x 16 dots and cannot be read: "
        "move the field or make it narrower, or let the page leave with OUT GO-LEFT.");
}

TEST_F(MessageCheck, FieldsAreAsWideAsWhatTheyCanShow) {
    project.CoilVar[0].onText = "M";
    project.CoilVar[0].offText = "MMM";
    EXPECT_CLEAN("DISPVAR 104 0 RED BLACK CoilVar1");
    EXPECT_FINDING("DISPVAR 106 0 RED BLACK CoilVar1", "1:25 field-cut");
    project.RegVar[0].width = "16";
    EXPECT_CLEAN("DISPVAR 0 0 RED BLACK RegVar1");
    project.RegVar[0].width = "17";
    EXPECT_FINDING("DISPVAR 0 0 RED BLACK RegVar1", "1:23 field-cut");
}

TEST_F(MessageCheck, CutBitmaps) {
    EXPECT_FINDING("IMG 0 0 RED BLACK wide.bmp", "1:19 bitmap-cut");
    EXPECT_FINDING("IMG 0 0 RED BLACK high.bmp", "1:19 bitmap-cut");
    EXPECT_FINDING("IMG 113 0 RED BLACK pump.bmp", "1:21 bitmap-cut");
    EXPECT_CLEAN("IMG 112 0 RED BLACK pump.bmp");
    EXPECT_CLEAN("IMG 0 0 RED BLACK wide.bmp\nOUT GO-LEFT 1 50");
    EXPECT_CLEAN("IMG 0 0 RED BLACK high.bmp\nIN GO-DOWN 1 50");
    EXPECT_FINDING("IMG 0 0 RED BLACK high.bmp\nOUT GO-LEFT 1 50", "1:19 bitmap-cut");
}

TEST_F(MessageCheck, FieldsWithoutRoom) {
    EXPECT_FINDING("TEXT 0 0 RED BLACK \"Level       m\"\nDISPVAR 48 0 RED BLACK RegVar1", "2:24 field-gap");
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \"Level        m\"\nDISPVAR 48 0 RED BLACK RegVar1");
    // A text that is drawn later covers the field instead.
    EXPECT_FINDING("DISPVAR 48 0 RED BLACK RegVar1\nTEXT 96 0 RED BLACK \"m\"", "2:22 field-overlap");
    // By one column of dots, the first of the letter or its last.
    EXPECT_FINDING("TEXT 55 0 RED BLACK \"L\"\nDISPVAR 0 0 RED BLACK RegVar1", "2:23 field-gap");
    EXPECT_CLEAN("TEXT 56 0 RED BLACK \"L\"\nDISPVAR 0 0 RED BLACK RegVar1");
    EXPECT_FINDING("TEXT 0 0 RED BLACK \"L\"\nDISPVAR 6 0 RED BLACK RegVar1", "2:23 field-gap");
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \"L\"\nDISPVAR 7 0 RED BLACK RegVar1");
    // In dots: a full stop lies below the small field, an underline too.
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \".....\"\nDISPVARS 0 0 RED BLACK CoilVar1");
    EXPECT_FINDING("TEXT 0 0 RED BLACK \"LLLLL\"\nDISPVARS 0 0 RED BLACK CoilVar1", "2:24 field-gap");
    EXPECT_CLEAN("TEXTS 0 5 RED BLACK \"__\"\nDISPVARS 0 0 RED BLACK CoilVar1");
    EXPECT_EQ(sentence("TEXT 0 0 RED BLACK \"12345678\"\nDISPVAR 0 0 RED BLACK RegVar12"),
              "RegVar12 is 7 wide and covers characters of this page: leave 7 blanks for it.");
}

/// More characters than that are not looked at, so that a hostile page stays cheap.
TEST_F(MessageCheck, TenThousandCharactersOfAPageAreLookedAtForFieldsWithoutRoom) {
    project.RegVar[0].width = "40";
    const auto blanks = [](int x, int cells) {
        return "TEXTS " + std::to_string(x) + " 0 RED BLACK \"" +
               std::string(static_cast<std::size_t>(cells), ' ') + "-\"\n";
    };
    const auto page = [](const std::string& texts) {
        return texts + "TEXTS 234 0 RED BLACK \"L\"\nDISPVARS 0 0 RED BLACK RegVar1";
    };
    std::string almostAll = blanks(6, 39);
    for (int i = 0; i < 249; ++i)
        almostAll += blanks(0, 40);
    EXPECT_EQ(found(page({}), 512), Found{"2:24 field-gap"});
    EXPECT_EQ(found(page(almostAll), 512), Found{"252:24 field-gap"});
    EXPECT_EQ(found(page(almostAll + blanks(234, 1)), 512), Found{});
}

TEST_F(MessageCheck, FieldsThatOverlap) {
    EXPECT_FINDING("DISPVAR 0 0 RED BLACK RegVar1\nDISPVAR 55 0 RED BLACK RegVar2", "2:24 field-overlap");
    EXPECT_CLEAN("DISPVAR 0 0 RED BLACK RegVar1\nDISPVAR 56 0 RED BLACK RegVar2");
    EXPECT_CLEAN("DISPVARS 0 0 RED BLACK RegVar1\nDISPVARS 0 7 RED BLACK RegVar2");
    EXPECT_FINDING("DISPVARS 0 0 RED BLACK RegVar1\n TIMES 0 6 RED BLACK ", "2:2 field-overlap");
    EXPECT_FINDING("TIME 0 0 RED BLACK \nTEXT 63 0 RED BLACK \" \"", "2:22 field-overlap");
    EXPECT_CLEAN("TIME 0 0 RED BLACK \nTEXT 64 0 RED BLACK \"a\"");
    EXPECT_CLEAN("TIME 0 0 RED BLACK \nTEXT 0 0 RED BLACK \"\"");
    EXPECT_FINDING("TIME 0 0 RED BLACK \nIMG 60 0 RED BLACK pump.bmp", "2:20 field-overlap");
    EXPECT_CLEAN("IMG 60 0 RED BLACK pump.bmp\nTIME 0 0 RED BLACK ");
    EXPECT_CLEAN("TIME 0 0 RED BLACK \nCLEAR\nTIME 0 0 RED BLACK ");
}

TEST_F(MessageCheck, WhatCoversAFieldBeginsWhereTheFieldEndsIfThereIsRoom) {
    const std::string field = "DISPVAR 48 0 RED BLACK RegVar1\n"; // dots 48 to 103
    EXPECT_EQ(sentence(field + "DISPVAR 96 0 RED BLACK CoilVar1"),
              "CoilVar1 covers RegVar1 (dots 96 to 103): begin it at 104.");
    EXPECT_EQ(sentence(field + "DISPVAR 103 0 RED BLACK CoilVar1"),
              "CoilVar1 covers RegVar1 (dot 103): begin it at 104.");
    EXPECT_EQ(sentence(field + "TEXT 48 0 RED BLACK \"Bar\""),
              "This text covers RegVar1 (dots 48 to 71): begin it at 104.");
    EXPECT_EQ(sentence(field + "TEXT 48 0 RED BLACK \"Bars\""),
              "This text covers RegVar1 (dots 48 to 79): move it.");
    EXPECT_EQ(sentence(field + "IMG 40 0 RED BLACK pump.bmp"),
              "This bitmap covers RegVar1 (dots 48 to 55): move it.");
}

TEST_F(MessageCheck, InvisibleElements) {
    EXPECT_FINDING("TEXT 0 0 BLACK BLACK \"a\"", "1:16 invisible");
    EXPECT_CLEAN("TEXT 0 0 BLACK BLACK \"  \"");
    EXPECT_CLEAN("TEXT 0 0 BLACK RED \"a\"");
    EXPECT_FINDING("DISPVAR 0 0 RED red RegVar1", "1:17 invisible");
    EXPECT_FINDING("TIMES 0 0 GREEN GREEN ", "1:17 invisible");
    EXPECT_FINDING("IMG 0 0 RED RED pump.bmp", "1:13 invisible");
    EXPECT_CLEAN("IMG 0 0 RED RED colour.bmp");
}

TEST_F(MessageCheck, PagesThatAreNeverSeen) {
    EXPECT_FINDING("CLEAR\n TEXT 0 0 RED BLACK \"a\"\nACT STILL 0\nIN FADE 0", "2:2 never-seen");
    EXPECT_FINDING("TEXT 0 0 RED BLACK \"a\"\nACT BLINK 0 75", "1:1 never-seen");
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \"a\"\nACT STILL 1");
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \"a\"");
    EXPECT_CLEAN("CLEAR\nACT STILL 0\nCLEAR\nACT STILL 10");
    // The line is that of what draws first.
    EXPECT_CLEAN("TEXT 0 0 RED BLACK \"\"\nACT STILL 0");
    EXPECT_FINDING("TEXT 0 0 RED BLACK \"\"\nTIME 0 0 RED BLACK \nACT STILL 0", "2:1 never-seen");
    for (const char* name : {"gone.bmp", "pump.png"})
        EXPECT_FINDING(std::string("IMG 0 0 RED BLACK ") + name + "\nACT STILL 0", "1:19 missing-bitmap");
}

TEST_F(MessageCheck, FindingsStandInTheOrderOfLinesAndColumns) {
    EXPECT_EQ(found("HELLO\nTEXT 0 0 RED RED \"Emergency stop pump\"\nENDMSG\nIMG 0 0 RED BLACK gone.bmp\n"
                    "ACT STILL 0"),
              (Found{"1:1 unknown-command", "2:1 never-seen", "2:14 invisible", "2:35 text-cut",
                     "3:1 reserved-line", "4:19 missing-bitmap"}));
}

TEST_F(MessageCheck, FindingsBeyondTheListAreCounted) {
    std::string script;
    for (int i = 0; i < 1500; ++i)
        script += "x\nIMG 0 0 RED BLACK gone.bmp\nENDMSG\nTEXT 0 0 RED RED \"a\"\nCLEAR\n";
    const Findings findings = checkMessage(named("ALTMSG1"), script, project, bitmaps, 128);
    EXPECT_EQ(findings.list.size(), maximumFindings);
    EXPECT_EQ(findings.counts.errors, 4500U);
    EXPECT_EQ(findings.counts.warnings, 1500U);
    EXPECT_EQ(findings.notListed(), 5000U);
    EXPECT_EQ(findings.list[999].place.line, 1666U); // three errors on five lines
    EXPECT_EQ(findings.list[999].code, Code::UnknownCommand);
    EXPECT_EQ(findings.list[999].place.item, named("ALTMSG1"));
}

TEST_F(MessageCheck, AListThatIsJustFullStaysInOrder) {
    std::string script;
    for (int i = 0; i < 999; ++i)
        script += "TEXT 0 0 RED RED \"a\"\nCLEAR\n";
    const Findings full = checkMessage(named("ALTMSG1"), script + "x", project, bitmaps, 128);
    ASSERT_EQ(full.list.size(), maximumFindings);
    EXPECT_EQ(full.notListed(), 0U);
    EXPECT_EQ(full.list.front().place.line, 1U);
    EXPECT_EQ(full.list.back().code, Code::UnknownCommand);
    const Findings more = checkMessage(named("ALTMSG1"), script + "x\nx", project, bitmaps, 128);
    ASSERT_EQ(more.list.size(), maximumFindings);
    EXPECT_EQ(more.notListed(), 1U);
    EXPECT_EQ(more.list[1].place.line, 2000U);
    EXPECT_EQ(more.list[2].place.line, 1U);
}

TEST_F(MessageCheck, ErrorsComeFirstWhereTheListHasNoRoomForAll) {
    std::string script;
    for (int i = 0; i < 1500; ++i)
        script += "TEXT 0 0 RED RED \"a\"\nCLEAR\n";
    const Findings findings = checkMessage(named("ALTMSG1"), script + "x\nENDMSG\nx", project, bitmaps, 128);
    ASSERT_EQ(findings.list.size(), maximumFindings);
    EXPECT_EQ(findings.list[1].code, Code::ReservedLine);
    EXPECT_EQ(findings.list[2].place.line, 3003U);
    EXPECT_EQ(findings.list[3].place.line, 1U);
    EXPECT_EQ(findings.list[999].place.line, 1993U);
}

TEST_F(MessageCheck, RejectsUnknownPanelWidths) {
    EXPECT_THROW(checkMessage(named("STDMSG1"), "", project, bitmaps, 0), std::invalid_argument);
    EXPECT_THROW(checkProject(project, bitmaps, 5000), std::invalid_argument);
}

TEST(FitTexts, SayHowMuchDoesNotFit) {
    EXPECT_EQ(unfitText(0), "");
    EXPECT_EQ(unfitText(1), "1 character does not fit");
    EXPECT_EQ(unfitText(10), "10 characters do not fit");
    EXPECT_EQ(placeText("RegVar12", 7, 5), "RegVar12 is 7 wide, its place 5: write %7v");
    EXPECT_EQ(placeText("RegVar12", 7, 7), "");
}

} // namespace
} // namespace orvista
