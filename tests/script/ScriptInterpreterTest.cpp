#include "script/ScriptInterpreter.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace orvista {
namespace {

template <typename Element>
Element onlyElement(const std::string& line) {
    const InterpretedScript script = interpretScript(line);
    EXPECT_TRUE(script.remarks.empty()) << line;
    if (script.pages.size() != 1 || script.pages[0].elements.size() != 1 ||
        !std::holds_alternative<Element>(script.pages[0].elements[0])) {
        ADD_FAILURE() << line;
        return {};
    }
    return std::get<Element>(script.pages[0].elements[0]);
}

ScriptStep onlyStep(const std::string& line) {
    const InterpretedScript script = interpretScript(line);
    EXPECT_TRUE(script.remarks.empty()) << line;
    if (script.pages.size() != 1 || script.pages[0].steps.size() != 1) {
        ADD_FAILURE() << line;
        return {};
    }
    return script.pages[0].steps[0];
}

using Lines = std::vector<std::pair<std::size_t, std::string>>;

Lines remarkedLines(const InterpretedScript& script) {
    Lines lines;
    for (const ScriptRemark& remark : script.remarks)
        lines.emplace_back(remark.line, remark.text);
    return lines;
}

void expectUnknown(const std::string& line) {
    const InterpretedScript script = interpretScript(line);
    EXPECT_EQ(remarkedLines(script), (Lines{{1, line}})) << line;
    EXPECT_TRUE(script.pages.empty()) << line;
}

TEST(Script, TextIsDrawnInEitherFont) {
    const auto large = onlyElement<TextElement>("TEXT 0 0 RED BLACK \"Temp: C\"");
    EXPECT_EQ(large.font, LedFont::Large8x15);
    EXPECT_EQ(large.placement, (Placement{0, 0, Led::Red, Led::Off}));
    EXPECT_EQ(large.text, "Temp: C");
    const auto small = onlyElement<TextElement>("TEXTS 12 5 GREEN ORANGE \" x \"");
    EXPECT_EQ(small.font, LedFont::Small5x7);
    EXPECT_EQ(small.placement, (Placement{12, 5, Led::Green, Led::Orange}));
    EXPECT_EQ(small.text, " x ");
}

TEST(Script, TextRunsFromTheFirstToTheLastQuote) {
    EXPECT_EQ(onlyElement<TextElement>("TEXT 0 0 RED BLACK \"say \"hi\" now\"").text, "say \"hi\" now");
    EXPECT_EQ(onlyElement<TextElement>("TEXT 0 0 RED BLACK \"\"\"").text, "\"");
    EXPECT_EQ(onlyElement<TextElement>("TEXT 0 0 RED BLACK \"\"").text, "");
    EXPECT_EQ(onlyElement<TextElement>("TEXT 0 0 RED BLACK \"a\" trailing").text, "a");
    expectUnknown("TEXT 0 0 RED BLACK \"open");
    expectUnknown("TEXT 0 0 RED BLACK bare");
    expectUnknown("TEXT 0 0 RED BLACK x\"y\"");
}

TEST(Script, ImageNamesMayHoldBlanks) {
    const auto image = onlyElement<ImageElement>("IMG 0 0 ORANGE BLACK my pump.BMP ");
    EXPECT_EQ(image.placement, (Placement{0, 0, Led::Orange, Led::Off}));
    EXPECT_EQ(image.name, "my pump.BMP");
    expectUnknown("IMG 0 0 ORANGE BLACK ");
}

TEST(Script, VariableFieldsNameTheirVariable) {
    const auto reg = onlyElement<FieldElement>("DISPVAR 48 0 GREEN BLACK RegVar1");
    EXPECT_EQ(reg.font, LedFont::Large8x15);
    EXPECT_EQ(reg.placement, (Placement{48, 0, Led::Green, Led::Off}));
    EXPECT_EQ(reg.value, LiveValue::Float);
    EXPECT_EQ(reg.index, 0U);
    const auto coil = onlyElement<FieldElement>("DISPVARS 6 5 RED BLACK COILVAR32");
    EXPECT_EQ(coil.font, LedFont::Small5x7);
    EXPECT_EQ(coil.value, LiveValue::Boolean);
    EXPECT_EQ(coil.index, 31U);
    EXPECT_EQ(onlyElement<FieldElement>("DISPVAR 0 0 RED BLACK RegVar64").index, 63U);
    for (const char* name : {"RegVar0", "RegVar65", "RegVar", "RegVar-1", "RegVar1x", "CoilVar0", "CoilVar33",
                             "Var1", "", "RegVar99999999999999999999"})
        expectUnknown(std::string("DISPVAR 0 0 RED BLACK ") + name);
}

TEST(Script, ClockFieldsCarryATrailingBlank) {
    const auto time = onlyElement<FieldElement>("TIME 8 0 RED BLACK ");
    EXPECT_EQ(time.value, LiveValue::Time);
    EXPECT_EQ(time.font, LedFont::Large8x15);
    EXPECT_EQ(time.placement.x, 8);
    EXPECT_EQ(onlyElement<FieldElement>("TIMES 6 5 RED BLACK ").font, LedFont::Small5x7);
    EXPECT_EQ(onlyElement<FieldElement>("DATE 0 0 RED BLACK").value, LiveValue::Date);
    EXPECT_EQ(onlyElement<FieldElement>("DATES 0 5 RED BLACK ").font, LedFont::Small5x7);
}

TEST(Script, EffectsEnterAndLeave) {
    struct Case {
        const char* word;
        Effect effect;
    };
    for (const auto& [word, effect] : {Case{"GO-LEFT", Effect::Left}, Case{"GO-RIGHT", Effect::Right},
                                       Case{"GO-UP", Effect::Up}, Case{"GO-DOWN", Effect::Down}}) {
        const ScriptStep in = onlyStep(std::string("IN ") + word + " 1 50");
        EXPECT_EQ(in.kind, StepKind::Enter);
        EXPECT_EQ(in.effect, effect);
        EXPECT_EQ(in.pixels, 1);
        EXPECT_EQ(in.milliseconds, 50);
        const ScriptStep out = onlyStep(std::string("OUT ") + word + " 3 100");
        EXPECT_EQ(out.kind, StepKind::Leave);
        EXPECT_EQ(out.effect, effect);
        EXPECT_EQ(out.pixels, 3);
        EXPECT_EQ(out.milliseconds, 100);
    }
    EXPECT_EQ(onlyStep("IN FADE 25").effect, Effect::Fade);
    EXPECT_EQ(onlyStep("IN FADE 25").milliseconds, 25);
    EXPECT_EQ(onlyStep("IN FADE 25").pixels, 1);
    EXPECT_EQ(onlyStep("OUT FADE 100").kind, StepKind::Leave);
    for (const char* line : {"IN", "OUT", "IN GO-LEFT", "IN GO-LEFT 1", "IN GO-LEFT 0 50", "IN GO-LEFT -1 50",
                             "IN FADE", "IN FADE fast", "IN GO-AWAY 1 50", "OUT 1 50"})
        expectUnknown(line);
}

TEST(Script, ActsHoldAndBlink) {
    EXPECT_EQ(onlyStep("ACT STILL 3000").kind, StepKind::Still);
    EXPECT_EQ(onlyStep("ACT STILL 3000").milliseconds, 3000);
    const ScriptStep blink = onlyStep("ACT BLINK 4 75");
    EXPECT_EQ(blink.kind, StepKind::Blink);
    EXPECT_EQ(blink.count, 4);
    EXPECT_EQ(blink.milliseconds, 75);
    for (const char* line : {"ACT", "ACT STILL", "ACT STILL -1", "ACT STILL 1.5", "ACT BLINK 4", "ACT BLINK",
                             "ACT DANCE 4 75", "ACT BLINK x 75"})
        expectUnknown(line);
}

TEST(Script, KeywordsAreKnownInAnyCaseAndFieldsInAnySpacing) {
    const auto text = onlyElement<TextElement>("  tExT   1    2  Red   black    \"a\"");
    EXPECT_EQ(text.placement, (Placement{1, 2, Led::Red, Led::Off}));
    EXPECT_EQ(onlyStep("act still 5").milliseconds, 5);
    EXPECT_EQ(interpretScript("clear\r\nClear\nCLEAR").pages.size(), 3U);
    // A tab is not a blank.
    expectUnknown("TEXT\t0 0 RED BLACK \"a\"");
}

TEST(Script, NumbersBeyondSenseAreBounded) {
    const std::string huge(100000, '9');
    const auto text = onlyElement<TextElement>("TEXT " + huge + " -" + huge + " RED BLACK \"a\"");
    EXPECT_EQ(text.placement.x, maximumCoordinate);
    EXPECT_EQ(text.placement.y, -maximumCoordinate);
    EXPECT_EQ(onlyStep("ACT STILL " + huge).milliseconds, maximumHold);
    EXPECT_EQ(onlyStep("ACT BLINK " + huge + " " + huge).count, maximumBlinks);
    EXPECT_EQ(onlyStep("ACT BLINK " + huge + " " + huge).milliseconds, maximumStepMilliseconds);
    EXPECT_EQ(onlyStep("IN GO-UP " + huge + " " + huge).milliseconds, maximumStepMilliseconds);
    EXPECT_EQ(onlyStep("IN GO-UP " + huge + " " + huge).pixels, maximumCoordinate);
    EXPECT_EQ(onlyElement<TextElement>("TEXT -3 007 RED BLACK \"a\"").placement,
              (Placement{-3, 7, Led::Red}));
}

TEST(Script, LinesItDoesNotKnowAreOnlyRemarked) {
    const InterpretedScript script = interpretScript(
        "CLEAR\r\nHELLO\r\n\r\n   \r\nTEXT 0 0 RED BLACK \"a\"\r\nTEXT 0 0 PINK BLACK \"b\"\r\nACT STILL 5");
    EXPECT_EQ(remarkedLines(script), (Lines{{2, "HELLO"}, {6, "TEXT 0 0 PINK BLACK \"b\""}}));
    ASSERT_EQ(script.pages.size(), 1U);
    EXPECT_EQ(script.pages[0].elements.size(), 1U);
    EXPECT_EQ(script.pages[0].steps.size(), 1U);
}

TEST(Script, MissingFieldsMakeALineUnknown) {
    for (const char* line :
         {"TEXT", "TEXT 0", "TEXT 0 0", "TEXT 0 0 RED", "TEXT 0 0 RED BLACK", "TEXT a 0 RED BLACK \"x\"",
          "TEXT 0 - RED BLACK \"x\"", "TEXT 0 --1 RED BLACK \"x\"", "TEXT +1 0 RED BLACK \"x\"", "IMG",
          "IMG 0 0 RED", "DISPVAR", "TIME", "TIME 0 0 RED", "DATES 0 0", "S", "CLEARS",
          "IMGS 0 0 RED BLACK a"})
        expectUnknown(line);
}

struct WrongWord {
    const char* line;
    std::size_t column;
    RemarkReason reason;
    std::optional<ScriptArgument> argument;
    const char* word;
};

TEST(Script, RemarksNameTheWordConcernedAndTheReason) {
    using enum ScriptArgument;
    constexpr auto bad = RemarkReason::BadArgument;
    constexpr auto range = RemarkReason::VariableRange;
    for (const WrongWord& wrong :
         {WrongWord{"HELLO 1", 1, RemarkReason::UnknownCommand, {}, "HELLO"},
          WrongWord{"  IMGS 0", 3, RemarkReason::UnknownCommand, {}, "IMGS"},
          WrongWord{"TEXT", 5, bad, X, ""},
          WrongWord{"TEXT  a b RED", 7, bad, X, "a"},
          WrongWord{"TEXT 0 --1 RED BLACK \"x\"", 8, bad, Y, "--1"},
          WrongWord{"TEXT 0 1 PINK BLACK \"x\"", 10, bad, Foreground, "PINK"},
          WrongWord{"TEXT 0 1 RED ", 14, bad, Background, ""},
          WrongWord{"TEXT 0 1 RED BLACK x\"", 20, bad, Text, "x\""},
          WrongWord{"IMG 0 0 RED BLACK  ", 20, bad, FileName, ""},
          WrongWord{"DISPVAR 0 0 RED BLACK Pump1", 23, bad, Variable, "Pump1"},
          WrongWord{"DISPVAR 0 0 RED BLACK RegVar", 23, bad, Variable, "RegVar"},
          WrongWord{"DISPVAR 0 0 RED BLACK RegVar65", 23, range, Variable, "RegVar65"},
          WrongWord{"DISPVARS 0 0 RED BLACK coilvar0", 24, range, Variable, "coilvar0"},
          WrongWord{"DISPVAR 0 0 RED RegVar65", 17, bad, Background, "RegVar65"},
          WrongWord{"TIME 0 0 RED", 13, bad, Background, ""},
          WrongWord{"IN GO-AWAY 1 50", 4, bad, Effect, "GO-AWAY"},
          WrongWord{"IN GO-LEFT 0 50", 12, bad, Pixels, "0"},
          WrongWord{"IN GO-LEFT 00 50", 12, bad, Pixels, "00"},
          WrongWord{"OUT FADE fast", 10, bad, Speed, "fast"},
          WrongWord{"ACT DANCE", 5, bad, Act, "DANCE"},
          WrongWord{"ACT STILL 1.5", 11, bad, Hold, "1.5"},
          WrongWord{"ACT BLINK x", 11, bad, BlinkCount, "x"},
          WrongWord{"ACT BLINK 4", 12, bad, BlinkTime, ""}}) {
        const InterpretedScript script = interpretScript(std::string("\r\n") + wrong.line);
        EXPECT_EQ(script.remarks,
                  (std::vector<ScriptRemark>{{2, wrong.line, wrong.column, wrong.reason, wrong.argument,
                                              wrong.word, std::string_view(wrong.word).size()}}))
            << wrong.line << ": column " << script.remarks.at(0).column << " " << script.remarks.at(0).word;
    }
}

TEST(Script, RemarksOfAFullPageNameTheCommand) {
    std::string script;
    for (std::size_t i = 0; i < maximumElementsOfAPage; ++i)
        script += "TIME 0 0 RED BLACK\n";
    const InterpretedScript full = interpretScript(script + " DATE 0 0 RED BLACK\nDATE x");
    ASSERT_EQ(full.remarks.size(), 2U);
    EXPECT_EQ(full.remarks[0],
              (ScriptRemark{257, " DATE 0 0 RED BLACK", 2, RemarkReason::PageFull, {}, "DATE", 4}));
    EXPECT_EQ(full.remarks[1].reason, RemarkReason::BadArgument);
}

TEST(Script, RemarksBeyondTheLimitAreCounted) {
    using Counts = std::array<std::size_t, remarkReasons>;
    std::string script;
    for (std::size_t i = 0; i < maximumRemarks + 7; ++i)
        script += "x\n";
    const InterpretedScript interpreted = interpretScript(script);
    EXPECT_EQ(interpreted.remarks.size(), maximumRemarks);
    EXPECT_EQ(interpreted.moreRemarks, (Counts{7, 0, 0, 0}));
    EXPECT_EQ(interpretScript("x").moreRemarks, Counts{});
}

TEST(Script, ElementsKnowWhereTheyStand) {
    const InterpretedScript script = interpretScript("\xEF\xBB\xBF TEXT 0 0 RED BLACK  \"a\"\r\n\r\n"
                                                     "  DISPVAR 0 0 RED BLACK   RegVar1 \n"
                                                     "CLEAR\rIMG 0 0 RED BLACK  my pump.bmp\n"
                                                     "  TIMES 0 5 RED BLACK ");
    ASSERT_EQ(script.pages.size(), 2U);
    EXPECT_EQ(script.pages[0].firstLine, 1U);
    EXPECT_EQ(script.pages[1].firstLine, 4U);
    const auto place = [&](std::size_t page, std::size_t element) {
        return sourceOf(script.pages[page].elements.at(element));
    };
    // The mark at the start is three bytes.
    EXPECT_EQ(place(0, 0), (ScriptSource{1, {5, 4}, {18, 5}, {26, 1}}));
    EXPECT_EQ(place(0, 1), (ScriptSource{3, {3, 7}, {19, 5}, {27, 7}}));
    EXPECT_EQ(place(1, 0), (ScriptSource{5, {1, 3}, {13, 5}, {20, 11}}));
    EXPECT_EQ(place(1, 1), (ScriptSource{6, {3, 5}, {17, 5}, {3, 5}}));
}

TEST(Script, PagesEndAtClearAndAfterLeaving) {
    const InterpretedScript script = interpretScript("TEXT 0 0 RED BLACK \"a\"\n"
                                                     "ACT STILL 1\n"
                                                     "CLEAR\n"
                                                     "TEXT 0 0 RED BLACK \"b\"\n"
                                                     "IN FADE 1\n"
                                                     "TEXT 9 0 RED BLACK \"c\"\n"
                                                     "ACT STILL 2\n"
                                                     "OUT FADE 3\n"
                                                     "CLEAR\n"
                                                     "CLEAR\n"
                                                     "ACT STILL 4\n");
    ASSERT_EQ(script.pages.size(), 4U);
    EXPECT_EQ(script.pages[0].elements.size(), 1U);
    const auto& steps = script.pages[1].steps;
    ASSERT_EQ(steps.size(), 3U);
    EXPECT_EQ(steps[0].elementCount, 1U);
    EXPECT_EQ(steps[1].elementCount, 2U);
    EXPECT_EQ(steps[2].elementCount, 2U);
    EXPECT_TRUE(script.pages[2].steps.empty());
    EXPECT_EQ(script.pages[3].steps.size(), 1U);
}

TEST(Script, WhatIsDrawnWithoutAHoldIsHeldForASecond) {
    const InterpretedScript script = interpretScript("CLEAR\nTEXT 0 0 RED BLACK \"a\"\nACT STILL 7\n"
                                                     "TEXT 8 0 RED BLACK \"b\"\nCLEAR");
    ASSERT_EQ(script.pages.size(), 2U);
    ASSERT_EQ(script.pages[0].steps.size(), 2U);
    EXPECT_EQ(script.pages[0].steps[1].kind, StepKind::Still);
    EXPECT_EQ(script.pages[0].steps[1].milliseconds, 1000);
    EXPECT_EQ(script.pages[0].steps[1].elementCount, 2U);
    EXPECT_TRUE(script.pages[1].steps.empty());
}

TEST(Script, AnElementAloneIsHeldForASecondToo) {
    const ScriptStep hold = onlyStep("TEXT 0 0 RED BLACK \"a\"");
    EXPECT_EQ(hold.kind, StepKind::Still);
    EXPECT_EQ(hold.milliseconds, 1000);
    EXPECT_EQ(hold.elementCount, 1U);
}

TEST(Script, RemarksQuoteTheFirst200BytesOfALine) {
    const std::string line(maximumRemarkLength + 1, 'x');
    const auto remarks = interpretScript(line).remarks;
    ASSERT_EQ(remarks.size(), 1U);
    EXPECT_EQ(remarks[0].text, line.substr(1));
    EXPECT_EQ(remarks[0].word, line.substr(1));
}

TEST(Script, PagesAreHandedOverOneByOneAndNotKept) {
    const std::string text =
        "NONSENSE\nTEXT 0 0 RED BLACK \"a\"\nOUT FADE 1\nCLEAR\nACT STILL\nACT STILL 7\nTIME 0 0 "
        "RED BLACK ";
    const InterpretedScript whole = interpretScript(text);
    std::vector<ScriptPage> pages;
    const InterpretedScript rest =
        interpretPageByPage(text, [&](ScriptPage& page) { pages.push_back(std::move(page)); });
    EXPECT_TRUE(rest.pages.empty());
    EXPECT_EQ(rest.remarks, whole.remarks);
    ASSERT_EQ(pages.size(), 2U);
    ASSERT_EQ(whole.pages.size(), 2U);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        EXPECT_EQ(pages[i].firstLine, whole.pages[i].firstLine);
        EXPECT_EQ(sourceOf(pages[i].elements.at(0)), sourceOf(whole.pages[i].elements.at(0)));
        EXPECT_EQ(pages[i].steps.size(), whole.pages[i].steps.size());
    }
}

TEST(Script, EmptyScriptsHaveNoPages) {
    EXPECT_TRUE(interpretScript("").pages.empty());
    EXPECT_TRUE(interpretScript("\r\n  \r\n").pages.empty());
    EXPECT_TRUE(interpretScript("\r\n").remarks.empty());
}

} // namespace
} // namespace orvista
