#include "sheets/VariableSheet.h"
#include "sheets/MessageSheet.h"
#include "sheets/NameSheet.h"
#include "tests/sheets/ImportErrors.h"
#include "tests/support/ExampleProject.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::vector<std::string> variableErrors(const std::string& csv, const Project& project = {}) {
    return testing::errorTexts(importVariables(csv, project));
}

std::vector<Change> changesOf(const std::string& csv, const Project& project = {}) {
    EXPECT_THAT(variableErrors(csv, project), IsEmpty());
    return importVariables(csv, project).changes;
}

TEST(VariableSheet, OfTheExampleIsAsWrittenFromTheDescription) {
    const Project project = testing::exampleProject();
    EXPECT_EQ(variableSheet(project), testing::golden("variables.csv"));
    EXPECT_THAT(changesOf(testing::golden("variables.csv"), project), IsEmpty());
}

TEST(VariableSheet, BringsEverythingIntoAnotherProject) {
    Project project = testing::exampleProject();
    project.RegVar[0] = {"RegVar1", "-2.50", "8", "1"};
    project.CoilVar[5] = {"CoilVar6", "1", "=1+1", "\"\x80\" zu, auf"};
    Project other;
    for (FloatVariable& variable : other.RegVar) // equal numbers would be no change
        variable.defaultValue = "none";
    applyChanges(other, changesOf(variableSheet(project), other));
    EXPECT_TRUE(other.RegVar == project.RegVar);
    EXPECT_TRUE(other.CoilVar == project.CoilVar);
}

TEST(VariableSheet, GuardsTextsButNotNumbers) {
    Project project;
    project.RegVar[0].defaultValue = "-2.5";
    project.CoilVar[0].onText = "-2.5 V";
    EXPECT_THAT(variableSheet(project), HasSubstr("\nRegVar1,-2.5,7,3,,\r\n"));
    EXPECT_THAT(variableSheet(project), HasSubstr("\nCoilVar1,0,,,'-2.5 V,OFF\r\n"));
}

TEST(VariableSheet, TakesEqualNumbersForNoChange) {
    Project project;
    project.RegVar[0].defaultValue = "7.50";
    project.CoilVar[0].defaultValue = "1";
    EXPECT_THAT(changesOf("name,default,width\nRegVar1,7.5,7\nRegVar2,0,7\nRegVar3,-0e3,7.0\nCoilVar1,1.0,\n",
                          project),
                IsEmpty());
    project.RegVar[0].defaultValue = " 7.50  ";
    EXPECT_THAT(changesOf("name,default\nRegVar1,7.5\n", project), IsEmpty());
    project.RegVar[0].defaultValue = "7.50";
    EXPECT_THAT(
        changesOf("name,default\nRegVar1,7.51\ncoilvar1,0\n", project),
        ElementsAre(changed("RegVar1", "default", "7.50", "7.51"), changed("CoilVar1", "default", "1", "0")));
}

TEST(VariableSheet, TakesNumbersWithoutTheTabsAroundThem) {
    Project project;
    applyChanges(project,
                 changesOf("name,default,width,precision\r\n\tRegVar1 ,\"\t2.5\",\"5\t\",\"\t1 \"\r\n"
                           "CoilVar1,\"1\t\",,\r\n"));
    EXPECT_EQ(project.RegVar[0], (FloatVariable{"RegVar1", "2.5", "5", "1"}));
    EXPECT_EQ(project.CoilVar[0].defaultValue, "1");
}

TEST(VariableSheet, LeavesColumnsAndRowsThatAreNotThere) {
    Project project;
    project.RegVar[0] = {"RegVar1", "5", "6", "2"};
    applyChanges(project, changesOf("width,name\n4,RegVar1\n", project));
    EXPECT_EQ(project.RegVar[0], (FloatVariable{"RegVar1", "5", "4", "2"}));
}

TEST(VariableSheet, EmptyCellsAreWhatReadingAFileMakesOfThem) {
    Project project;
    project.RegVar[0] = {"RegVar1", "5", "6", "2"};
    project.CoilVar[0] = {"CoilVar1", "1", "RUN", "STOP"};
    applyChanges(project,
                 changesOf("name,default,width,precision,on,off\nRegVar1,,,,,\nCoilVar1,,,,,\n", project));
    EXPECT_EQ(project.RegVar[0], (FloatVariable{"RegVar1", "0.0", "7", "3"}));
    EXPECT_EQ(project.CoilVar[0], (BooleanVariable{"CoilVar1", "0", "", ""}));
}

TEST(VariableSheet, KeepsWhatAProjectHoldsHoweverOddItIs) {
    Project project;
    project.RegVar[0] = {"RegVar1", "abc", "12", "x"};
    project.CoilVar[0].defaultValue = "on";
    EXPECT_THAT(changesOf(variableSheet(project), project), IsEmpty());
}

TEST(VariableSheet, TellsOfEveryErrorAtOnce) {
    EXPECT_THAT(
        variableErrors("name,default,width,precision,on,off\n"
                       "RegVar65,,,,,\n"
                       "RegVar1,\"7,5\",9,4,,\n"
                       "RegVar2,1,7,4,a,\n"
                       "RegVar3,1,2,1,,\nRegVar4,1,8,0,,\n"
                       "CoilVar1,2,7,,ON,\"a\nb\"\n"
                       "CoilVar2,0,,,\xCE\x93,OFF\n"
                       "RegVar1,1,,,,\n"),
        ElementsAre(
            "row 2, name: \"RegVar65\" is not a variable; there are RegVar1 to RegVar64 and CoilVar1 to "
            "CoilVar32",
            "row 3, default: \"7,5\" is not a number", "row 3, width: \"9\" is not a number from 2 to 8",
            "row 3, precision: \"4\" is not a number from 0 to 3",
            "row 4, precision: \"4\" is not a number from 0 to 3", "row 4, on: RegVar2 has none",
            "row 7, default: \"2\" is not 0 or 1", "row 7, width: CoilVar1 has none",
            "row 7, off: the text is one line", "row 8, on: \"\xCE\x93\" is not a character of the display",
            "row 9, name: RegVar1 stands in row 3 already"));
    EXPECT_THAT(variableErrors("default\n1\n"), ElementsAre("row 1, name: missing column"));
}

TEST(SheetSubject, IsToldByTheColumns) {
    const Project project;
    EXPECT_EQ(sheetSubject(variableSheet(project)), SheetSubject::Variables);
    EXPECT_EQ(sheetSubject(messageSheet(project, MessageSheetForm::Scripts).csv), SheetSubject::Messages);
    EXPECT_EQ(sheetSubject(messageSheet(project, MessageSheetForm::Pages).csv), SheetSubject::Messages);
    EXPECT_EQ(sheetSubject("script;MESSAGE\r\n"), SheetSubject::Messages);
    EXPECT_EQ(sheetSubject(nameSheet({})), SheetSubject::Names);
    EXPECT_EQ(sheetSubject("Label;Name\n"), SheetSubject::Names);
    EXPECT_EQ(sheetSubject("name,comment,default\n"), SheetSubject::Variables);
    for (const char* other : {"", "default,width\n", "\xFF\xFEname", "\"name"})
        EXPECT_EQ(sheetSubject(other), std::nullopt) << other;
}

} // namespace
} // namespace orvista
