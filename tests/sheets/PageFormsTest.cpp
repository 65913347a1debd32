#include "sheets/PageForms.h"
#include "tests/sheets/RandomForms.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

const FieldFormats plainFormats = fieldFormats(Project());

TEST(PageForms, AThousandWizardPagesComeBackAsForms) {
    testing::RandomForms forms(1);
    for (int round = 0; round < 1'000; ++round) {
        const std::string page = BuildPartialScript(forms.next(), PathRules::windows());
        const auto back = pageForms(page, plainFormats);
        ASSERT_TRUE(back) << page;
        ASSERT_EQ(back->size(), 1U);
        ASSERT_EQ(builtScript(*back), page);
        const auto saved = pageForms(testing::reopened("CLEAR\r\n\r\n" + page), plainFormats);
        ASSERT_TRUE(saved) << page;
        ASSERT_EQ(*saved, *back) << page;
    }
}

TEST(PageForms, AreThereForEmptyPages) {
    EXPECT_EQ(pageForms("CLEAR", plainFormats), std::vector{MessageForm{}});
    EXPECT_EQ(pageForms("CLEAR\r\n\r\nCLEAR\r\n", plainFormats), std::vector{MessageForm{}});
    const auto two = pageForms("CLEAR\r\nTEXT 0 0 RED BLACK \"a\"\r\nACT STILL 1000\r\nCLEAR", plainFormats);
    ASSERT_TRUE(two);
    EXPECT_EQ(two->size(), 2U);
}

TEST(PageForms, AreNotThereForWhatTheWizardDoesNotWrite) {
    const std::string text = "TEXT 0 0 RED BLACK \"a  b\"";
    const std::string field = "\r\nDISPVAR 8 0 RED BLACK RegVar1";
    const std::string end = "\r\nACT STILL 1000";
    ASSERT_TRUE(pageForms("CLEAR\r\n" + text + field + end, plainFormats));
    for (const std::string& script : {std::string(),
                                      std::string("clear"),
                                      text + end,
                                      "CLEAR\r\n" + text,
                                      "CLEAR\r\n" + text + end + "\r\nHELLO",
                                      "CLEAR\r\nTEXT 1 0 RED BLACK \"a\"" + end,
                                      "CLEAR\r\nTEXT 0 0 RED BLACK \"\"" + end,
                                      "CLEAR\r\nTEXT  0 0 RED BLACK \"a\"" + end,
                                      "CLEAR\r\nTEXT 0 0 red BLACK \"a\"" + end,
                                      "CLEAR\r\nTEXT 0 0 RED BLACK \"a\" x" + end,
                                      "CLEAR\r\nTEXT 0 0 RED BLACK \"%5v\"" + end,
                                      "CLEAR\r\n" + text + "\r\nDISPVAR 0 0 RED BLACK RegVar1" + end,
                                      "CLEAR\r\n" + text + "\r\nDISPVAR 32 0 RED BLACK RegVar1" + end,
                                      "CLEAR\r\n" + text + "\r\nDISPVAR 9 0 RED BLACK RegVar1" + end,
                                      "CLEAR\r\n" + text + "\r\nDISPVARS 12 5 RED BLACK RegVar1" + end,
                                      "CLEAR\r\n" + text + "\r\nDISPVAR 16 0 RED BLACK RegVar1" + field + end,
                                      "CLEAR\r\n" + text + field + field + end,
                                      "CLEAR\r\n" + text + "\r\n" + text + end,
                                      "CLEAR\r\n" + text + "\r\nACT STILL 1500",
                                      "CLEAR\r\n" + text + "\r\nACT STILL 11000",
                                      "CLEAR\r\n" + text + "\r\nACT BLINK 5 75\r\nACT STILL 500",
                                      "CLEAR\r\n" + text + "\r\nACT BLINK 4 75",
                                      "CLEAR\r\n" + text + "\r\nIN GO-LEFT 2 50" + end,
                                      "CLEAR\r\n" + text + "\r\nIN FADE 51" + end,
                                      "CLEAR\r\n" + text + end + "\r\nIN FADE 50",
                                      "CLEAR\r\n" + text + end + "\r\nOUT FADE 50\r\n" + text + end,
                                      "CLEAR\r\nIMG 0 0 RED BLACK a/b.bmp" + end,
                                      "CLEAR\r\nIMG 0 0 RED BLACK a.bmp" + field + end,
                                      "CLEAR\r\n" + field + end,
                                      std::string("CLEAR\r\nACT STILL 1000")})
        EXPECT_FALSE(pageForms(script, plainFormats)) << script;
}

TEST(PageForms, AFieldTakesItsShownWidthOfTheBlanks) {
    const auto contentOf = [](const std::string& text, const std::string& fields,
                              const FieldFormats& formats) {
        const auto forms = pageForms(
            "CLEAR\r\nTEXT 0 0 RED BLACK \"" + text + "\"" + fields + "\r\nACT STILL 1000", formats);
        return forms ? forms->front().txtText : "none";
    };
    const std::string first = "\r\nDISPVAR 8 0 RED BLACK RegVar1";
    EXPECT_EQ(contentOf("a         b", first, plainFormats), "a%7v  b");
    EXPECT_EQ(contentOf("a   b", first, plainFormats), "a%3vb");
    EXPECT_EQ(contentOf("a    b", first + "\r\nDISPVAR 24 0 RED BLACK CoilVar1", plainFormats), "a%2v%2vb");
    EXPECT_EQ(contentOf("a     b", "\r\nDISPVAR 8 0 RED BLACK CoilVar1", plainFormats), "a%3v  b");
    EXPECT_EQ(contentOf("a             ", "\r\nDATE 8 0 RED BLACK ", plainFormats), "a%10v   ");
    Project project;
    project.CoilVar[0].onText = project.CoilVar[0].offText = "";
    EXPECT_EQ(contentOf("a   b", "\r\nDISPVAR 8 0 RED BLACK CoilVar1", fieldFormats(project)), "a%1v  b");
}

} // namespace
} // namespace orvista
