#include "model/ProjectFile.h"
#include "model/SystemPath.h"

#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace orvista::DocMgrModule {
namespace {

using namespace orvista::testing;
namespace fs = std::filesystem;
using Shown = ScriptedMessages::Shown;

/// Name, bytes and time of every file of a folder.
using Contents = std::map<std::string, std::pair<std::string, fs::file_time_type>>;

Contents contentsOf(const TemporaryFolder& folder) {
    Contents contents;
    for (const auto& entry : fs::directory_iterator(systemPath(folder.path())))
        contents[utf8Path(entry.path().filename())] = {fileBytes(utf8Path(entry.path())),
                                                       entry.last_write_time()};
    return contents;
}

class ProjectWithoutWriting : public ::testing::Test {
protected:
    void write(const std::string& name, const std::string& bytes) { writeBytes(folder.file(name), bytes); }

    /// What reading shows and leaves in the model is what opening shows and leaves; the folder stays.
    void expectSameAsOpening() {
        const Contents before = contentsOf(folder);
        readsIt = readProjectWithoutWriting(folder.file("Plant.orx"), project, context);
        EXPECT_EQ(contentsOf(folder), before);
        Project opened;
        ScriptedMessages openedMessages;
        EXPECT_EQ(ReadProject(folder.file("Plant.orx"), opened, {rules, openedMessages}), readsIt);
        EXPECT_EQ(messages.shown, openedMessages.shown);
        EXPECT_EQ(project.SerialPort, opened.SerialPort);
        EXPECT_EQ(project.IP, opened.IP);
        EXPECT_EQ(project.AnalogInput, opened.AnalogInput);
        EXPECT_EQ(project.DigitalInput, opened.DigitalInput);
        EXPECT_EQ(project.AlertMessage, opened.AlertMessage);
        EXPECT_EQ(project.RegularMessage, opened.RegularMessage);
        EXPECT_EQ(project.RegVar, opened.RegVar);
        EXPECT_EQ(project.CoilVar, opened.CoilVar);
        EXPECT_EQ(project.STDMSG, opened.STDMSG);
        EXPECT_EQ(project.ALTMSG, opened.ALTMSG);
    }

    TemporaryFolder folder;
    PathRules rules = PathRules::native();
    ScriptedMessages messages;
    FileContext context{rules, messages};
    Project project;
    bool readsIt = false;
};

TEST_F(ProjectWithoutWriting, ReadsEverySectionOfTheProjectFileAndNothingElse) {
    write("Plant.orx", "[CONFIG]\nSerialPort   COM3\nIP   127.0.0.7\n[MODBUS.ADR]\nAnalogInput 500\n"
                       "[STDMSG.ILM]\nDEFMSG s\n  regular \n\nENDMSG\n[ALTMSG.ILM]\nDEFMSG a\nalarm\nENDMSG\n"
                       "[ILMVAR.DEF]\nDEFVAR v\ntype float\naddress 502\ndefault 9\n\nENDVAR\n");
    for (const char* name : {"modbus.adr", "stdmsg.ilm", "altmsg.ilm", "ilmvar.def", "default.pls"})
        write(name, "DEFMSG x\nold\nENDMSG\nAnalogInput 900\n");
    expectSameAsOpening();
    EXPECT_TRUE(readsIt);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(project.SerialPort, "COM3");
    EXPECT_EQ(project.AnalogInput, 500);
    EXPECT_EQ(project.STDMSG[0], "regular\r\n");
    EXPECT_EQ(project.ALTMSG[0], "alarm\r\n");
    EXPECT_EQ(project.RegVar[1].defaultValue, "9");
    EXPECT_EQ(project.ProjPath, folder.path());
    EXPECT_EQ(project.ProjName, "Plant");
}

TEST_F(ProjectWithoutWriting, TakesTheFileOfAMissingSection) {
    write("Plant.orx", "[MODBUS.ADR]\nAlertMessage 500\n[ILMVAR.DEF]\n[ALTMSG.ILM]\n");
    write("StdMsg.ILM", "DEFMSG s\nfrom the file\nENDMSG\n");
    expectSameAsOpening();
    EXPECT_TRUE(readsIt);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(project.STDMSG[0], "from the file\r\n");
    EXPECT_EQ(project.RegularMessage, 520);
}

TEST_F(ProjectWithoutWriting, TellsOfTheFileOfAMissingSectionThatIsMissingToo) {
    write("Plant.orx", "[MODBUS.ADR]\n[STDMSG.ILM]\nDEFMSG s\nx\nENDMSG\n[ALTMSG.ILM]\n");
    expectSameAsOpening();
    EXPECT_TRUE(readsIt) << "a device file that fails does not fail the project";
    EXPECT_EQ(messages.shown,
              (std::vector<Shown>{{MessageIcon::None, "Unable to open " + folder.file("ilmvar.def")}}));
    EXPECT_EQ(project.STDMSG[0], "x\r\n");
}

TEST_F(ProjectWithoutWriting, TellsOfAnAddressThatDoesNotFit) {
    write("Plant.orx", "[MODBUS.ADR]\nAnalogInput 7\nDigitalInput 9999999999\nAlertMessage 9\n"
                       "[STDMSG.ILM]\n[ALTMSG.ILM]\n[ILMVAR.DEF]\n");
    expectSameAsOpening();
    EXPECT_TRUE(readsIt);
    EXPECT_EQ(messages.shown,
              (std::vector<Shown>{{MessageIcon::None, "exception ooccured when reading data"}}));
    EXPECT_EQ(project.AnalogInput, 7);
    EXPECT_EQ(project.AlertMessage, 300);
}

TEST_F(ProjectWithoutWriting, OfTwoSectionsTheSecondCounts) {
    write("Plant.orx", "[MODBUS.ADR]\n[STDMSG.ILM]\nDEFMSG a\nfirst\nENDMSG\nDEFMSG b\nfirst\nENDMSG\n"
                       "[CONFIG]\nIP 127.0.0.8\n[STDMSG.ILM]\nDEFMSG a\nsecond\nENDMSG\n[CONFIG]\nlost\n"
                       "[ALTMSG.ILM]\n[ILMVAR.DEF]\n");
    expectSameAsOpening();
    EXPECT_EQ(project.STDMSG[0], "second\r\n");
    EXPECT_EQ(project.STDMSG[1], "CLEAR");
    EXPECT_EQ(project.IP, "127.0.0.8");
}

TEST_F(ProjectWithoutWriting, FailsWithAProjectFileThatIsNotThere) {
    expectSameAsOpening();
    EXPECT_FALSE(readsIt);
    EXPECT_EQ(messages.shown,
              (std::vector<Shown>{{MessageIcon::None, "Unable to open " + folder.file("Plant.orx")}}));
    EXPECT_EQ(project.ProjName, "");
}

TEST_F(ProjectWithoutWriting, ReadsFromAFolderThatCannotBeWritten) {
    write("Plant.orx", "[MODBUS.ADR]\n[STDMSG.ILM]\nDEFMSG s\nx\nENDMSG\n[ALTMSG.ILM]\n[ILMVAR.DEF]\n");
    fs::permissions(systemPath(folder.path()), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_TRUE(readProjectWithoutWriting(folder.file("Plant.orx"), project, context));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(project.STDMSG[0], "x\r\n");
    fs::permissions(systemPath(folder.path()), fs::perms::owner_all);
}

TEST_F(ProjectWithoutWriting, APathWithoutAFolderMeansThePresentOne) {
    write("Plant.orx", "[MODBUS.ADR]\n[STDMSG.ILM]\n[ALTMSG.ILM]\n");
    write("ilmvar.def", "DEFVAR v\ntype bit\naddress 131\ndefault 1\nENDVAR\n");
    const fs::path before = fs::current_path();
    fs::current_path(systemPath(folder.path()));
    EXPECT_TRUE(readProjectWithoutWriting("Plant.orx", project, context));
    fs::current_path(before);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(project.CoilVar[31].defaultValue, "1");
    EXPECT_EQ(project.ProjPath, ".");
}

} // namespace
} // namespace orvista::DocMgrModule
