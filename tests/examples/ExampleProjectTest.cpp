#include "check/ProjectCheck.h"
#include "display/FolderBitmaps.h"
#include "items/NotesFile.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

namespace orvista {
namespace {

constexpr const char* exampleName = "PUMPSTATION";
const std::string exampleFolder = std::string(ORVISTA_EXAMPLES) + "/pumpstation";

/// A copy of the example: opening a project rewrites files beside it.
class ExampleProject : public ::testing::Test {
protected:
    ExampleProject() {
        for (const auto& entry : std::filesystem::directory_iterator(systemPath(exampleFolder)))
            std::filesystem::copy(entry.path(), systemPath(folder_.file(utf8Path(entry.path().filename()))));
        EXPECT_TRUE(DocMgrModule::ReadProject(folder_.file("PUMPSTATION.orx"), project_, context_));
    }

    void expectFilesAsShipped() const {
        for (const std::string_view name :
             {"PUMPSTATION.orx", "modbus.adr", "stdmsg.ilm", "altmsg.ilm", "ilmvar.def", "default.pls"}) {
            const std::string shipped = testing::fileBytes(exampleFolder + "/" + std::string(name));
            EXPECT_EQ(testing::fileBytes(folder_.file(std::string(name))), shipped) << name;
        }
    }

    testing::TemporaryFolder folder_;
    PathRules paths_ = PathRules::native();
    testing::ScriptedMessages messages_;
    DocMgrModule::FileContext context_{paths_, messages_};
    Project project_;
};

TEST_F(ExampleProject, SavingItUnchangedWritesTheShippedFiles) {
    ASSERT_EQ(DocMgrModule::SaveProject(folder_.path(), exampleName, project_, context_),
              DocMgrModule::SaveOutcome::Saved);
    expectFilesAsShipped();
    EXPECT_THAT(messages_.shown, ::testing::IsEmpty());
}

TEST_F(ExampleProject, ReadsBackTheSameHoweverOftenItIsSaved) {
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(DocMgrModule::SaveProject(folder_.path(), exampleName, project_, context_),
                  DocMgrModule::SaveOutcome::Saved);
        Project again;
        ASSERT_TRUE(DocMgrModule::ReadProject(folder_.file("PUMPSTATION.orx"), again, context_));
        EXPECT_EQ(again.STDMSG, project_.STDMSG);
        EXPECT_EQ(again.RegVar, project_.RegVar);
    }
}

TEST_F(ExampleProject, TalksToThisMachineOnly) {
    EXPECT_EQ(project_.IP, "127.0.0.1");
}

TEST_F(ExampleProject, ShowsTheLevelInAScrollingMessage) {
    EXPECT_EQ(project_.STDMSG[2], "CLEAR\r\n"
                                  "TEXT 0 0 GREEN BLACK \"Level       m\"\r\n"
                                  "DISPVAR 48 0 ORANGE BLACK RegVar1\r\n"
                                  "IN GO-LEFT 1 50\r\n"
                                  "ACT STILL 4000\r\n"
                                  "OUT GO-LEFT 1 50\r\n");
    EXPECT_EQ(project_.RegVar[0], (FloatVariable{"RegVar1", "1.85", "5", "2"}));
    EXPECT_EQ(project_.CoilVar[2], (BooleanVariable{"CoilVar3", "1", "OPEN", "CLOSED"}));
}

TEST_F(ExampleProject, HoldsADozenMessagesAndAFewForEmergencies) {
    const auto isUsed = [](const std::string& text) { return text != "CLEAR\r\n"; };
    EXPECT_EQ(std::ranges::count_if(project_.STDMSG, isUsed), 13);
    EXPECT_EQ(std::ranges::count_if(project_.ALTMSG, isUsed), 5);
}

TEST_F(ExampleProject, HasNothingForTheCheckToFind) {
    const Findings findings = checkProject(project_, FolderBitmaps(folder_.path()), 128, Notes::Included);
    for (const Finding& finding : findings.list)
        ADD_FAILURE() << nameOf(finding.place.item) << ":" << finding.place.line << " " << finding.text;
}

TEST_F(ExampleProject, HasNotesForWhatItsMessagesShow) {
    const NotesReading reading = readNotesFile(folder_.file("PUMPSTATION.notes.json"));
    EXPECT_EQ(reading.fault, "");
    EXPECT_THAT(reading.bad, ::testing::IsEmpty());
    EXPECT_EQ(reading.notes.columns, 128);
    for (std::size_t index = 0; index < 9; ++index)
        EXPECT_NE(reading.notes.of({Kind::Float, index}).label, "") << index;
}

TEST_F(ExampleProject, ShipsTheBitmapsItsMessagesName) {
    int bitmaps = 0;
    const auto look = [&](const std::string& text) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (!line.starts_with("IMG "))
                continue;
            ++bitmaps;
            const std::string name = line.substr(line.rfind(' ') + 1, line.find('\r') - line.rfind(' ') - 1);
            EXPECT_TRUE(std::filesystem::is_regular_file(systemPath(exampleFolder + "/" + name))) << name;
        }
    };
    std::ranges::for_each(project_.STDMSG, look);
    std::ranges::for_each(project_.ALTMSG, look);
    EXPECT_EQ(bitmaps, 3);
}

} // namespace
} // namespace orvista
