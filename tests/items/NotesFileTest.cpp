#include "items/NotesFile.h"
#include "model/PathRules.h"
#include "tests/support/NamedItem.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace orvista {
namespace {

using ::testing::IsEmpty;

const NoteField& label = noteFields[0];
const NoteField& unit = noteFields[1];

class NotesFile : public ::testing::Test {
protected:
    std::string path(const std::string& name) const { return folder_.file(name); }
    std::string bytes(const std::string& name) const { return testing::fileBytes(path(name)); }
    void write(const std::string& name, const std::string& bytes) const {
        testing::writeBytes(path(name), bytes);
    }
    bool exists(const std::string& name) const { return std::filesystem::exists(path(name)); }
    std::string failure(const ProjectNotes& before, const ProjectNotes& after) const {
        try {
            changeNotes(path("A.notes.json"), before, after);
        } catch (const NotesFailure& failure) {
            return failure.what();
        }
        return {};
    }

private:
    testing::TemporaryFolder folder_;
};

TEST_F(NotesFile, LiesBesideTheProject) {
    EXPECT_EQ(notesPath("plant/LINE.orx"), "plant/LINE.notes.json");
    EXPECT_EQ(notesPath("LINE.1.ORX"), "LINE.1.notes.json");
    Project project;
    EXPECT_EQ(notesPath(project), "");
    project.ProjPath = "/plant";
    project.ProjName = "LINE";
    EXPECT_EQ(notesPath(project), PathRules::native().join("/plant", "LINE.notes.json"));
}

#ifndef _WIN32 // needs a file system that tells cases apart
TEST_F(NotesFile, IsFoundInAnyCase) {
    write("LINE.Notes.json", "{}");
    EXPECT_EQ(notesPath(path("line.orx")), path("LINE.Notes.json"));
    write("line.notes.json", "{}");
    EXPECT_EQ(notesPath(path("line.orx")), path("line.notes.json"));
}
#endif

TEST_F(NotesFile, ThatIsNotThereIsEmpty) {
    const NotesReading reading = readNotesFile(path("A.notes.json"));
    EXPECT_EQ(reading.notes, ProjectNotes());
    EXPECT_EQ(reading.fault, "");
    EXPECT_EQ(changeNotes(path("A.notes.json"), {}, {}), ProjectNotes());
    EXPECT_FALSE(exists("A.notes.json"));
}

TEST_F(NotesFile, ThatCannotBeReadHasAFault) {
    std::filesystem::create_directory(path("A.notes.json"));
    EXPECT_NE(readNotesFile(path("A.notes.json")).fault, "");
    write("B.notes.json", "{}");
    EXPECT_EQ(notesFaultText("B.notes.json", readNotesFile(path("B.notes.json"))),
              "B.notes.json is not taken: its \"version\" is not 1");
}

TEST_F(NotesFile, GetsOnlyWhatWasChanged) {
    ProjectNotes after;
    after.set(named("RegVar1"), {"Level", "m", ""});
    changeNotes(path("A.notes.json"), {}, after);
    EXPECT_EQ(readNotesFile(path("A.notes.json")).notes, after);
    // Somebody else notes something meanwhile.
    write("A.notes.json",
          R"({"version":1,"items":{"RegVar1":{"label":"Height","unit":"m"},"RegVar2":{"label":"B"}}})");
    ProjectNotes edited = after;
    edited.set(named("RegVar1"), unit, "cm");
    const ProjectNotes merged = changeNotes(path("A.notes.json"), after, edited);
    EXPECT_EQ(merged.of(named("RegVar1")), (ItemNote{"Height", "cm", ""}));
    EXPECT_EQ(merged.of(named("RegVar2")).label, "B");
    EXPECT_EQ(readNotesFile(path("A.notes.json")).notes, merged);
}

TEST_F(NotesFile, StaysAsItIsWhereTheChangeCannotBe) {
    const std::string others = R"({"version":1,"items":{"RegVar2":{"label":"Level"}}})";
    ProjectNotes after;
    after.set(named("RegVar1"), label, "LEVEL");
    write("A.notes.json", others);
    EXPECT_EQ(failure({}, after),
              path("A.notes.json") + ": RegVar2: \"Level\" is the label of RegVar1 already");
    EXPECT_EQ(bytes("A.notes.json"), others);
    write("A.notes.json", "no notes");
    EXPECT_EQ(failure({}, after),
              path("A.notes.json") + " is not taken: line 1, column 2 is not JSON; mend or remove it first");
    EXPECT_EQ(bytes("A.notes.json"), "no notes");
}

TEST_F(NotesFile, IsCopiedAsItIs) {
    copyNotes(path("A.orx"), path("B.orx"));
    EXPECT_FALSE(exists("B.notes.json"));
    write("A.notes.json", "{\"version\":1, \"x\":\t1.50}");
    copyNotes(path("A.orx"), path("B.orx"));
    EXPECT_EQ(bytes("B.notes.json"), "{\"version\":1, \"x\":\t1.50}");
    copyNotes(path("A.orx"), path("A.orx"));
    EXPECT_EQ(bytes("A.notes.json"), "{\"version\":1, \"x\":\t1.50}");
    EXPECT_THROW(copyNotes(path("A.orx"), path("none/B.orx")), NotesFailure);
}

TEST_F(NotesFile, IsCopiedWholeOrNotAtAll) {
    const std::string longest(mostNotesBytes, ' ');
    write("A.notes.json", longest);
    copyNotes(path("A.orx"), path("B.orx"));
    EXPECT_EQ(bytes("B.notes.json"), longest);
    write("A.notes.json", longest + "\n");
    try {
        copyNotes(path("A.orx"), path("C.orx"));
        ADD_FAILURE() << "copied";
    } catch (const NotesFailure& failure) {
        EXPECT_EQ(failure.what(), path("A.notes.json") + " is not copied: it is longer than 1 MB");
    }
    EXPECT_FALSE(exists("C.notes.json"));
}

} // namespace
} // namespace orvista
