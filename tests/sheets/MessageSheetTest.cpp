#include "sheets/MessageSheet.h"
#include "script/ScriptLines.h"
#include "sheets/PageForms.h"
#include "tests/sheets/ImportErrors.h"
#include "tests/sheets/RandomForms.h"
#include "tests/support/ExampleProject.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<std::string> messageErrors(const std::string& csv, const Project& project = {}) {
    return testing::errorTexts(importMessages(csv, project));
}

Project imported(const std::string& csv, Project project = {}) {
    const SheetImport import = importMessages(csv, project);
    EXPECT_THAT(testing::errorTexts(import), IsEmpty());
    applyChanges(project, import.changes);
    return project;
}

std::string sheetOf(const Project& project, MessageSheetForm form) {
    return messageSheet(project, form).csv;
}

TEST(MessageSheet, TellsOfEveryPageThatIsTwiceOrMissing) {
    EXPECT_THAT(
        messageErrors(
            "message,page,content\nSTDMSG1,1,a\nSTDMSG1,5,b\nSTDMSG1,1,c\nSTDMSG1,1,d\nSTDMSG1,7,e\n"),
        ElementsAre("row 3, page: pages 2 to 4 of STDMSG1 are missing",
                    "row 4, page: page 1 of STDMSG1 stands in row 2 already",
                    "row 5, page: page 1 of STDMSG1 stands in row 2 already",
                    "row 6, page: page 6 of STDMSG1 is missing"));
}

TEST(MessageSheet, AWrongWordHidesNoPage) {
    EXPECT_THAT(messageErrors("message,page,content,font\nSTDMSG1,1,a,huge\nSTDMSG1,1,b,\nSTDMSG1,3,c,\n"),
                ElementsAre(::testing::StartsWith("row 2, font: "),
                            "row 3, page: page 1 of STDMSG1 stands in row 2 already",
                            "row 4, page: page 2 of STDMSG1 is missing"));
}

TEST(MessageSheet, WhereANumberCannotBeReadNoPageIsMissing) {
    EXPECT_THAT(messageErrors("message,page,content\nSTDMSG1,1,a\nSTDMSG1,two,b\nSTDMSG1,3,c\nSTDMSG1,3,d\n"),
                ElementsAre("row 3, page: \"two\" is not the number of a page, from 1",
                            "row 5, page: page 3 of STDMSG1 stands in row 4 already"));
}

TEST(MessageSheet, OfTheExampleIsAsWrittenFromTheDescription) {
    const Project project = testing::exampleProject();
    EXPECT_EQ(sheetOf(project, MessageSheetForm::Scripts), testing::golden("messages.csv"));
    EXPECT_EQ(sheetOf(project, MessageSheetForm::Pages), testing::golden("pages.csv"));
}

TEST(MessageSheet, OfTheExampleImportedIntoItselfChangesNothing) {
    const Project project = testing::exampleProject();
    for (const char* const name : {"messages.csv", "pages.csv"})
        EXPECT_THAT(importMessages(testing::golden(name), project).changes, IsEmpty()) << name;
}

/// Any bytes, in lines that end in CR LF.
class RandomScripts {
public:
    explicit RandomScripts(unsigned seed) : forms_(seed) {}

    std::string next() {
        switch (forms_.below(4)) {
        case 0:
            return wizardPages();
        case 1:
            return testing::reopened(wizardPages());
        default:
            return lines();
        }
    }

private:
    std::string wizardPages() {
        std::vector<MessageForm> forms(1 + forms_.below(3));
        for (MessageForm& form : forms)
            form = forms_.next();
        return builtScript(forms);
    }

    std::string lines() {
        static const std::vector<std::string> beginnings{
            "CLEAR", "TEXT 0 0 RED BLACK \"", "=", "'", "'=", "-5", "+", "@", "\t", "", "DISPVAR 8 0 "};
        std::string script;
        for (auto count = 1 + forms_.below(6); count > 0; --count) {
            script += beginnings[forms_.below(beginnings.size())];
            for (auto length = forms_.below(12); length > 0; --length)
                script += character();
            script += count > 1 || forms_.below(2) == 0 ? "\r\n" : "";
        }
        // What no file keeps is an error; that has tests of its own.
        return script.find_first_not_of(" \r\n") == std::string::npos ? "x" + script : script;
    }

    char character() {
        for (;;) {
            const char any =
                static_cast<char>(forms_.below(3) == 0 ? forms_.below(256) : " ,;\"'%"[forms_.below(6)]);
            if (any != '\r' && any != '\n' && any != '\0') // NUL is refused
                return any;
        }
    }

    testing::RandomForms forms_;
};

TEST(MessageSheet, TenThousandScriptsComeBackByteForByte) {
    RandomScripts scripts(10);
    Project other; // so that each script is a change, also one that says CLEAR
    other.STDMSG.fill("other");
    other.ALTMSG.fill("other");
    for (std::size_t count = 0; count < 10'000; count += messageCount) {
        Project project;
        for (const Item message : allMessages())
            scriptOf(project, message) = scripts.next();
        const Project back = imported(sheetOf(project, MessageSheetForm::Scripts), other);
        ASSERT_EQ(back.STDMSG, project.STDMSG);
        ASSERT_EQ(back.ALTMSG, project.ALTMSG);
        // As pages they come back the same where they are, and say the same elsewhere.
        const std::string pages = sheetOf(project, MessageSheetForm::Pages);
        ASSERT_THAT(importMessages(pages, project).changes, IsEmpty());
        const Project elsewhere = imported(pages);
        for (const Item message : allMessages())
            ASSERT_TRUE(
                equivalent(scriptOf(elsewhere, message), scriptOf(project, message), EmptyStart::IsLeftOut))
                << scriptOf(project, message);
    }
}

TEST(MessageSheet, AThousandFormsGiveTheWizardsBytes) {
    testing::RandomForms forms(2);
    for (int round = 0; round < 1'000; ++round) {
        const MessageForm form = forms.next();
        std::vector<std::string> row = testing::RandomForms::typedCells(form);
        row.insert(row.begin(), {"ALTMSG7", "1"});
        std::string csv = "message,page,content,bitmap,font,foreground,background,"
                          "var1,var1_foreground,var1_background,var2,var2_foreground,var2_background,"
                          "var3,var3_foreground,var3_background,var4,var4_foreground,var4_background,"
                          "entering,entering_speed,special,delay,leaving,leaving_speed\n";
        appendRecord(csv, row);
        ASSERT_EQ(imported(csv).ALTMSG[6], BuildPartialScript(form, PathRules::windows())) << csv;
    }
}

TEST(MessageSheet, AnEmptyCellIsTheWizardsDefault) {
    const Project project = imported("message;page;content\nstdmsg3;1;Level %5v m\n");
    MessageForm form;
    form.txtText = "Level %5v m";
    EXPECT_EQ(project.STDMSG[2], BuildPartialScript(form, PathRules::posix()));
}

TEST(MessageSheet, WhatIsTakenForAnEmptyVariableIsSaidOfItsRow) {
    const SheetImport import =
        importMessages("message,page,content,var1,var2\n"
                       "STDMSG1,1,%5v and %v,RegVar2,\nSTDMSG2,1,Level %5v,,\nSTDMSG3,1,plain,,\n",
                       {});
    EXPECT_THAT(testing::errorTexts(import), IsEmpty());
    EXPECT_THAT(testing::errorTexts(import.notes), ElementsAre("row 2: var2 is empty: CoilVar1 is taken",
                                                               "row 3: var1 is empty: CoilVar1 is taken"));
    EXPECT_THAT(import.changes, SizeIs(3));
    EXPECT_THAT(import.changes[1].after, HasSubstr(" CoilVar1"));
}

TEST(MessageSheet, PagesAreJoinedInTheOrderOfTheirNumbers) {
    const Project project = imported("page,message,content,bitmap,entering,leaving,special,delay\n"
                                     "2,STDMSG1,b,,none,None,blink,3\n"
                                     "1,STDMSG1,,C:\\p\\a.bmp,NONE,NONE,STILL,10\n");
    EXPECT_EQ(project.STDMSG[0], "CLEAR\r\nIMG 0 0 RED BLACK a.bmp\r\nACT STILL 10000\r\n"
                                 "CLEAR\r\nTEXT 0 0 RED BLACK \"b\"\r\nACT BLINK 4 75\r\nACT STILL 500");
}

TEST(MessageSheet, RowsThatAreNotThereStay) {
    Project project;
    project.STDMSG[4] = "kept";
    EXPECT_EQ(imported("message,script\nSTDMSG1,new\n", project).STDMSG[4], "kept");
    EXPECT_EQ(imported("message,script\nSTDMSG5,new\n", project).STDMSG[4], "new");
}

TEST(MessageSheet, AnEmptyMessageIsClear) {
    Project project;
    project.STDMSG[0] = "old";
    EXPECT_EQ(imported("message,script\nSTDMSG1,\n", project).STDMSG[0], "CLEAR");
    EXPECT_EQ(imported("message,page,content\nSTDMSG1,1,\n", project).STDMSG[0], "CLEAR");
    project.STDMSG[0] = "CLEAR\r\n";
    EXPECT_THAT(importMessages("message,page,content\nSTDMSG1,1,\n", project).changes, IsEmpty());
    project.STDMSG[0] = "";
    EXPECT_THAT(importMessages("message,script\nSTDMSG1,\n", project).changes, IsEmpty());
}

TEST(MessageSheet, WhatSavingAndOpeningTakesAwayOrAddsIsNoChange) {
    Project project;
    project.STDMSG[0] = "CLEAR\r\nTEXT 0 0 RED BLACK \"a  b\"\r\n";
    for (const char* const same :
         {"CLEAR\nTEXT 0 0 RED BLACK \"\"a  b\"\"", "\n  CLEAR  \n\n \nTEXT 0 0 RED BLACK \"\"a  b\"\" \n\n"})
        EXPECT_THAT(
            importMessages(std::string("message,script\nSTDMSG1,\"") + same + "\"\n", project).changes,
            IsEmpty())
            << same;
    for (const char* const other :
         {"CLEAR\nTEXT 0 0 RED BLACK \"\"a b\"\"", "CLEAR\n\tTEXT 0 0 RED BLACK \"\"a  b\"\"",
          "Clear\nTEXT 0 0 RED BLACK \"\"a  b\"\"", "CLEAR\nCLEAR\nTEXT 0 0 RED BLACK \"\"a  b\"\""})
        EXPECT_THAT(
            importMessages(std::string("message,script\nSTDMSG1,\"") + other + "\"\n", project).changes,
            SizeIs(1))
            << other;
}

TEST(MessageSheet, EveryLineEndMeansAWholeOne) {
    EXPECT_EQ(imported("message,script\nSTDMSG1,\"a\nb\rc\r\n\"\n").STDMSG[0], "a\r\nb\r\nc\r\n");
    Project project;
    project.STDMSG[0] = "a\nb";
    project.ALTMSG[19] = "a\r\nb\r";
    const MessageSheet sheet = messageSheet(project, MessageSheetForm::Scripts);
    EXPECT_THAT(sheet.mendedLineEnds, ElementsAre(named("STDMSG1"), named("ALTMSG20")));
    EXPECT_THAT(sheet.csv, HasSubstr("\nSTDMSG1,\"a\r\nb\"\r\n"));
}

TEST(MessageSheet, TellsOldAndNew) {
    EXPECT_THAT(
        importMessages("message,script\nALTMSG2,b\nSTDMSG9,a\n", Project()).changes,
        ElementsAre(changed("STDMSG9", "script", "CLEAR", "a"), changed("ALTMSG2", "script", "CLEAR", "b")));
}

TEST(MessageSheet, TellsOfEveryErrorAtOnce) {
    EXPECT_THAT(messageErrors("message,page,content,bitmap,font,foreground,var1,delay,script,size\n"
                              "STDMSG41,1,a,,,,,,,\n"
                              "STDMSG1,1,a,b.bmp,5x8,PINK,RegVar65,11,,\n"
                              "STDMSG1,1,a\xC2\xA0\xCE\x93,,,,,,,\n"
                              "STDMSG2,1,a,,,,,,CLEAR,\n"
                              "STDMSG3,,a,,,,,,,\n"
                              "STDMSG4,1,%v%2v%3v%4v%5v,,,,,,,\n"
                              "STDMSG5,2,a,,,,,,,\n"
                              "STDMSG6,1,a,,,,,,,\nSTDMSG6,1,b,,,,,,,\n"
                              "STDMSG7,,,,,,,,CLEAR,\nSTDMSG7,,,,,,,,CLEAR,\nSTDMSG7,1,a,,,,,,,\n"
                              "STDMSG8,1,a,,,,,,,\nSTDMSG8,,,,,,,,CLEAR,\n"
                              "STDMSG9,1,\"a\nb\",,,,,,,\n"),
                ElementsAre("row 1: unknown column \"size\"",
                            "row 2, message: \"STDMSG41\" is not a message; there are STDMSG1 to STDMSG40 "
                            "and ALTMSG1 to ALTMSG20",
                            "row 3, bitmap: a page has a content or a bitmap, not both",
                            "row 3, font: \"5x8\" is not one of 5x7, 8x15",
                            "row 3, foreground: \"PINK\" is not one of RED, GREEN, ORANGE, BLACK",
                            "row 3, var1: \"RegVar65\" is not a variable, DATE or TIME",
                            "row 3, delay: \"11\" is not one of 1, 2, 3, 4, 5, 6, 7, 8, 9, 10",
                            "row 4, content: \"\xCE\x93\" is not a character of the display",
                            "row 4, page: page 1 of STDMSG1 stands in row 3 already",
                            "row 5, script: a row is a page or a whole script, not both",
                            "row 6, page: \"\" is not the number of a page, from 1",
                            "row 7, content: a page has four live fields: the fifth %v is too many",
                            "row 8, page: page 1 of STDMSG5 is missing",
                            "row 10, page: page 1 of STDMSG6 stands in row 9 already",
                            "row 12, message: STDMSG7 stands in row 11 already",
                            "row 13, page: STDMSG7 has its whole script in row 11",
                            "row 15, script: STDMSG8 has a page in row 14 already",
                            "row 16, content: a page's content is one line"));
}

TEST(MessageSheet, CountsPagesUpToAMillion) {
    EXPECT_THAT(messageErrors("message,page,content\nSTDMSG1,1000000,a\nSTDMSG2,1000001,a\nSTDMSG3,0,a\n"),
                ElementsAre("row 2, page: pages 1 to 999999 of STDMSG1 are missing",
                            "row 3, page: \"1000001\" is not the number of a page, from 1",
                            "row 4, page: \"0\" is not the number of a page, from 1"));
}

TEST(MessageSheet, TellsOfColumnsThatAreMissing) {
    EXPECT_THAT(messageErrors("script\nCLEAR\n"), ElementsAre("row 1, message: missing column"));
    EXPECT_THAT(messageErrors("message\nSTDMSG1\n"), ElementsAre("row 1, script: missing column"));
    EXPECT_THAT(messageErrors("mesage,script\nSTDMSG1,a\n"),
                ElementsAre("row 1: unknown column \"mesage\"", "row 1, message: missing column"));
    EXPECT_THAT(messageErrors("message,content,script\nSTDMSG1,a,\n"),
                ElementsAre("row 1, page: missing column"));
}

TEST(MessageSheet, RefusesScriptsThatNoFileKeeps) {
    EXPECT_EQ(messageErrors("message,script\nSTDMSG1, endmsg\n").size(), 1U);
    ASSERT_EQ(messageErrors("message,script\nSTDMSG1,\"a\n[Config]\"\n").size(), 1U);
    EXPECT_THAT(messageErrors("message,script\nSTDMSG1,\"a\n[Config]\"\n").front(),
                HasSubstr("row 2, script: line 2: "));
    EXPECT_EQ(messageErrors("message,script\nSTDMSG1,\" \n\"\n").size(), 1U);
    EXPECT_THAT(messageErrors("message,script\nSTDMSG1,\"a DEFMSG\n[CONFIG] b\"\n"), IsEmpty());
}

} // namespace
} // namespace orvista
