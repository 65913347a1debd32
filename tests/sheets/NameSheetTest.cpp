#include "sheets/NameSheet.h"
#include "tests/sheets/ImportErrors.h"
#include "tests/support/ExampleProject.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

ProjectNotes someNotes() {
    ProjectNotes notes;
    notes.set(named("RegVar1"), {"Level", "m", "Level of tank 1"});
    notes.set(named("STDMSG2"), {"TankFull", "", "=not a formula, \"tank\""});
    return notes;
}

std::vector<std::string> nameErrors(const std::string& csv) {
    const NameImport import = importNames(csv, someNotes());
    EXPECT_TRUE(import.errors.none() || import.notes == someNotes());
    return testing::errorTexts(import.errors);
}

ProjectNotes namesImported(const std::string& csv) {
    EXPECT_THAT(nameErrors(csv), IsEmpty());
    return importNames(csv, someNotes()).notes;
}

TEST(NameSheet, OfTheExampleIsAsWrittenFromTheDescription) {
    EXPECT_EQ(nameSheet(testing::exampleNotes()), testing::golden("names.csv"));
}

TEST(NameSheet, HasARowForEachItem) {
    const std::string csv = nameSheet(someNotes());
    EXPECT_THAT(csv, StartsWith("\xEF\xBB\xBFname,label,unit,comment\r\nRegVar1,Level,m,Level of tank 1\r\n"
                                "RegVar2,,,\r\n"));
    EXPECT_NE(csv.find("\r\nSTDMSG2,TankFull,,\"'=not a formula, \"\"tank\"\"\"\r\n"), std::string::npos);
    EXPECT_EQ(std::ranges::count(csv, '\n'), 157);
    EXPECT_EQ(importNames(csv, {}).notes, someNotes());
}

TEST(NameSheet, LeavesWhatItDoesNotName) {
    ProjectNotes notes = someNotes();
    notes.set(named("RegVar1"), {"Level", "cm", "Level of tank 1"});
    EXPECT_EQ(namesImported("unit;name\ncm;regvar1\n"), notes);
    notes.set(named("STDMSG2"), {});
    EXPECT_EQ(namesImported("name,label,unit,comment\nRegular2,,,\nRegVar1, Level ,cm,Level of tank 1\n"),
              notes);
}

TEST(NameSheet, LetsLabelsChangePlaces) {
    const ProjectNotes notes = namesImported("name,label\nRegVar1,TankFull\nSTDMSG2,Level\n");
    EXPECT_EQ(notes.of(named("RegVar1")).label, "TankFull");
    EXPECT_EQ(notes.of(named("STDMSG2")).label, "Level");
}

TEST(NameSheet, TellsAllErrorsAtOnceByRowAndColumn) {
    EXPECT_THAT(
        nameErrors("name,label,unit,comment\nRegVar65,A,,\nRegVar2,two words,12345678901234567,\n"
                   "RegVar3,TANKFULL,,\nRegVar4,B,,\nRegVar5,b,,\nRegVar5,C,,\naddress map,D,,\n"),
        ElementsAre("row 2, name: \"RegVar65\" is not a variable or message",
                    "row 3, label: \"two words\" holds something else than letters A to Z, digits and _",
                    "row 3, unit: \"12345678901234567\" is longer than 16 characters",
                    "row 4, label: \"TANKFULL\" is the label of STDMSG2 already",
                    "row 6, label: \"b\" is the label of RegVar4 already",
                    "row 7, name: RegVar5 stands in row 6 already",
                    "row 8, name: \"address map\" is not a variable or message"));
    EXPECT_THAT(nameErrors("label\nA\n"), ElementsAre("row 1, name: missing column"));
}

TEST(NameSheet, TellsWhatChanges) {
    ProjectNotes after = someNotes();
    after.set(named("RegVar1"), {"Level", "cm", ""});
    EXPECT_THAT(noteChanges(someNotes(), after),
                ElementsAre(NoteChange{named("RegVar1"), &noteFields[1], "m", "cm"},
                            NoteChange{named("RegVar1"), &noteFields[2], "Level of tank 1", ""}));
}

} // namespace
} // namespace orvista
