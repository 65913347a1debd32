#include "model/ProjectFile.h"
#include "model/SystemPath.h"

#include "tests/support/ExpectedFiles.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace orvista::DocMgrModule {
namespace {

using namespace orvista::testing;
namespace fs = std::filesystem;
using Shown = ScriptedMessages::Shown;

class ProjectFile : public ::testing::Test {
protected:
    bool read(const std::string& bytes, Project& project) {
        writeBytes(folder.file("Plant.orx"), bytes);
        return ReadProject(folder.file("Plant.orx"), project, context);
    }
    bool exists(const std::string& name) const { return fs::exists(systemPath(folder.file(name))); }

    TemporaryFolder folder;
    PathRules rules = PathRules::native();
    ScriptedMessages messages;
    FileContext context{rules, messages};
};

TEST_F(ProjectFile, SavingWritesTheProjectFileAndTheFiveDeviceFiles) {
    Project project;
    project.IP = "127.0.0.1";
    EXPECT_EQ(SaveProject(folder.path(), "Plant", project, context), SaveOutcome::Saved);
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), expectedProjectFile("127.0.0.1"));
    EXPECT_EQ(fileBytes(folder.file("modbus.adr")), expectedAddressMap);
    EXPECT_EQ(fileBytes(folder.file("stdmsg.ilm")), expectedMessages("STDMSG", 40));
    EXPECT_EQ(fileBytes(folder.file("altmsg.ilm")), expectedMessages("ALTMSG", 20));
    EXPECT_EQ(fileBytes(folder.file("ilmvar.def")), expectedFloats() + expectedBooleans(""));
    EXPECT_EQ(fileBytes(folder.file("default.pls")), expectedPlayList());
    EXPECT_EQ(std::distance(fs::directory_iterator(systemPath(folder.path())), {}), 6)
        << "nothing else stays";
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ProjectFile, WhatWasSavedIsReadBack) {
    Project project;
    project.SerialPort = "COM7";
    project.IP = "127.0.0.9";
    project.AnalogInput = 1000;
    project.DigitalInput = 2000;
    project.AlertMessage = 3000;
    project.RegularMessage = 3020;
    project.RegVar[63].defaultValue = "-1.5";
    project.CoilVar[31] = {"CoilVar32", "1", "\"q\" \xE9", "\xA0x"};
    project.STDMSG[0] = "CLEAR\r\nTEXT 0 0 RED BLACK \"a\xFF\"\r\nACT STILL 1000";
    project.ALTMSG[19] = "";
    ASSERT_EQ(SaveProject(folder.path(), "Plant", project, context), SaveOutcome::Saved);

    Project back;
    ASSERT_TRUE(ReadProject(folder.file("Plant.orx"), back, context));
    EXPECT_EQ(back.SerialPort, "COM7");
    EXPECT_EQ(back.IP, "127.0.0.9");
    EXPECT_EQ(back.AnalogInput, 1000);
    EXPECT_EQ(back.DigitalInput, 2000);
    EXPECT_EQ(back.AlertMessage, 3000);
    EXPECT_EQ(back.RegVar, project.RegVar);
    EXPECT_EQ(back.CoilVar, project.CoilVar);
    EXPECT_EQ(back.STDMSG[0], project.STDMSG[0] + "\r\n");
    EXPECT_EQ(back.STDMSG[39], "CLEAR\r\n");
    EXPECT_EQ(back.ALTMSG[19], "CLEAR\r\n");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ProjectFile, EveryByteSurvivesSavingAndOpening) {
    std::string text = "a";
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '\r' && byte != '\n')
            text.push_back(static_cast<char>(byte));
    }
    text += "z";
    Project project;
    project.SerialPort = project.IP = text;
    project.RegVar[0] = {"RegVar1", text, text, text};
    project.CoilVar[0] = {"CoilVar1", text, text, text};
    project.STDMSG[39] = project.ALTMSG[0] = text;
    ASSERT_EQ(SaveProject(folder.path(), "Plant", project, context), SaveOutcome::Saved);

    Project back;
    ASSERT_TRUE(ReadProject(folder.file("Plant.orx"), back, context));
    EXPECT_EQ(back.SerialPort, text);
    EXPECT_EQ(back.IP, text);
    EXPECT_EQ(back.RegVar, project.RegVar);
    EXPECT_EQ(back.CoilVar, project.CoilVar);
    EXPECT_EQ(back.STDMSG[39], text + "\r\n");
    EXPECT_EQ(back.ALTMSG[0], text + "\r\n");
}

TEST_F(ProjectFile, AByteOrderMarkInFrontIsSkipped) {
    Project project;
    ASSERT_TRUE(read("\xEF\xBB\xBF[CONFIG]\nIP 127.0.0.3\n"
                     "[MODBUS.ADR]\n[STDMSG.ILM]\n[ALTMSG.ILM]\n[ILMVAR.DEF]\n",
                     project));
    EXPECT_EQ(project.IP, "127.0.0.3");
}

TEST_F(ProjectFile, ARegularStartThatBreaksTheRuleLastsUntilReopening) {
    Project project;
    project.RegularMessage = 400;
    ASSERT_EQ(SaveProject(folder.path(), "Plant", project, context), SaveOutcome::Saved);
    ASSERT_TRUE(ReadProject(folder.file("Plant.orx"), project, context));
    EXPECT_EQ(project.RegularMessage, 320);
}

TEST_F(ProjectFile, SectionsInAnotherOrderReadTheSame) {
    Project project;
    ASSERT_TRUE(read("[ILMVAR.DEF]\nDEFVAR v\ntype float\naddress 502\ndefault 9\nENDVAR\n"
                     "[ALTMSG.ILM]\nDEFMSG a\nalarm\nENDMSG\n[STDMSG.ILM]\nDEFMSG s\nregular\nENDMSG\n"
                     "[modbus.adr]\nAnalogInput 500\n[config]\nserialport COM3\nip 127.0.0.2\n",
                     project));
    EXPECT_EQ(project.RegVar[1].defaultValue, "9") << "the address map is read before the variables";
    EXPECT_EQ(project.ALTMSG[0], "alarm\r\n");
    EXPECT_EQ(project.STDMSG[0], "regular\r\n");
    EXPECT_EQ(project.SerialPort, "COM3");
    EXPECT_EQ(project.IP, "127.0.0.2");
}

const std::string deviceSections = "[MODBUS.ADR]\n[STDMSG.ILM]\n[ALTMSG.ILM]\n[ILMVAR.DEF]\n";

TEST_F(ProjectFile, WithoutSettingsTheCurrentOnesStay) {
    Project project;
    project.SerialPort = "COM9";
    project.IP = "127.0.0.5";
    ASSERT_TRUE(read(deviceSections, project));
    EXPECT_EQ(project.SerialPort, "COM9");
    EXPECT_EQ(project.IP, "127.0.0.5");
}

TEST_F(ProjectFile, TheCharacterBehindIpIsSkippedWhateverItIs) {
    Project project;
    ASSERT_TRUE(read(deviceSections + "[CONFIG]\nIPX  127.0.0.7 \n", project));
    EXPECT_EQ(project.IP, "127.0.0.7");
    ASSERT_TRUE(read(deviceSections + "[CONFIG]\nipconfig\nSERIALPORTCOM4\nother\n", project));
    EXPECT_EQ(project.IP, "onfig");
    EXPECT_EQ(project.SerialPort, "OM4");
    ASSERT_TRUE(read(deviceSections + "[CONFIG]\nIP\n", project));
    EXPECT_EQ(project.IP, "");
}

TEST_F(ProjectFile, OfTwoSectionsOfOneNameTheSecondCounts) {
    Project project;
    ASSERT_TRUE(read("[MODBUS.ADR]\n[ALTMSG.ILM]\n[ILMVAR.DEF]\n[STDMSG.ILM]\nDEFMSG a\nfirst\nENDMSG\n"
                     "[STDMSG.ILM]\nDEFMSG a\nsecond\nENDMSG\n",
                     project));
    EXPECT_EQ(project.STDMSG[0], "second\r\n");
    EXPECT_EQ(fileBytes(folder.file("stdmsg.ilm")), "DEFMSG a\r\nsecond\r\nENDMSG\r\n");
}

TEST_F(ProjectFile, SettingsInTheMiddleStopTheCopying) {
    Project project;
    ASSERT_TRUE(read("[MODBUS.ADR]\n[STDMSG.ILM]\n[ILMVAR.DEF]\n[ALTMSG.ILM]\nDEFMSG a\nx\nENDMSG\n"
                     "[CONFIG]\nIP 127.0.0.8\nDEFMSG b\ny\nENDMSG\n",
                     project));
    EXPECT_EQ(fileBytes(folder.file("altmsg.ilm")), "DEFMSG a\r\nx\r\nENDMSG\r\n");
    EXPECT_EQ(project.IP, "127.0.0.8");
}

TEST_F(ProjectFile, LinesAreTrimmedAndEmptyAndEarlyOnesLost) {
    Project project;
    ASSERT_TRUE(read("early\nIP 127.0.0.6\n[MODBUS.ADR]\n\n  AnalogInput   7  \n   \n\tx \n[STDMSG.ILM]\n"
                     "[ALTMSG.ILM]\n[ILMVAR.DEF]\n",
                     project));
    EXPECT_EQ(fileBytes(folder.file("modbus.adr")), "AnalogInput   7\r\n\tx\r\n");
    EXPECT_NE(project.IP, "127.0.0.6");
}

TEST_F(ProjectFile, OpeningRewritesTheDeviceFiles) {
    Project project;
    ASSERT_EQ(SaveProject(folder.path(), "Plant", project, context), SaveOutcome::Saved);
    writeBytes(folder.file("modbus.adr"), "AnalogInput 5\n");
    writeBytes(folder.file("default.pls"), "x");
    ASSERT_TRUE(ReadProject(folder.file("Plant.orx"), project, context));
    EXPECT_EQ(fileBytes(folder.file("modbus.adr")), expectedAddressMap);
    EXPECT_EQ(fileBytes(folder.file("default.pls")), expectedPlayList());
    EXPECT_EQ(project.AnalogInput, 100);
}

TEST_F(ProjectFile, AMissingSectionLeavesTheOldDeviceFileWhichIsRead) {
    Project project;
    writeBytes(folder.file("stdmsg.ilm"), "DEFMSG old\nold\nENDMSG\n");
    ASSERT_TRUE(read("[MODBUS.ADR]\n[ALTMSG.ILM]\n[ILMVAR.DEF]\n", project));
    EXPECT_EQ(project.STDMSG[0], "old\r\n");
}

TEST_F(ProjectFile, AMissingProjectFileIsToldAndReadsNothing) {
    Project project;
    EXPECT_FALSE(ReadProject(folder.file("None.orx"), project, context));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "Unable to open " + folder.file("None.orx")}));
    EXPECT_FALSE(exists("default.pls"));
}

TEST_F(ProjectFile, AFolderInPlaceOfAFileIsToldByItsPath) {
    Project project;
    fs::create_directory(systemPath(folder.file("stdmsg.ilm")));
    EXPECT_FALSE(read("[CONFIG]\nIP 127.0.0.4\n" + deviceSections, project));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "Unable to open " + folder.file("StdMsg.ilm")}));
    EXPECT_EQ(project.IP, "127.0.0.4") << "what was read before stays";
}

TEST_F(ProjectFile, AFileInPlaceOfTheFolderIsTold) {
    Project project;
    writeBytes(folder.file("file"), "x");
    const std::string path = rules.join(folder.file("file"), "Plant.orx");
    EXPECT_FALSE(ReadProject(path, project, context));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "Unable to open " + path}));
}

TEST_F(ProjectFile, APlayListThatCannotBeWrittenIsToldAndTheProjectRead) {
    Project project;
    fs::create_directory(systemPath(folder.file("default.pls")));
    EXPECT_TRUE(read("[MODBUS.ADR]\nAnalogInput 7\n[STDMSG.ILM]\n[ALTMSG.ILM]\n[ILMVAR.DEF]\n", project));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0],
              (Shown{MessageIcon::Exclamation, "unable to open " + folder.file("default.pls")}));
    EXPECT_EQ(project.AnalogInput, 7);
}

#ifdef __linux__
/// A file that opens but cannot be read, as on a damaged disk.
constexpr const char* unreadable = "/proc/self/mem";

TEST_F(ProjectFile, AReadingFailureIsToldByThePath) {
    Project project;
    fs::create_symlink(unreadable, folder.file("Plant.orx"));
    EXPECT_FALSE(ReadProject(folder.file("Plant.orx"), project, context));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "exception ooccured when reading data from " +
                                                               folder.file("Plant.orx")}));
    EXPECT_FALSE(exists("default.pls"));
}

TEST_F(ProjectFile, ADeviceFileThatCannotBeReadDoesNotFailTheProject) {
    Project project;
    fs::create_symlink(unreadable, folder.file("stdmsg.ilm"));
    EXPECT_TRUE(read("[MODBUS.ADR]\n[ALTMSG.ILM]\nDEFMSG a\nread\nENDMSG\n[ILMVAR.DEF]\n", project));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "exception ooccured when reading data"}));
    EXPECT_EQ(project.ALTMSG[0], "read\r\n") << "the file after it is read";
}
#endif

TEST_F(ProjectFile, AReaderThatFailsDoesNotFailTheProject) {
    Project project;
    EXPECT_TRUE(
        read("[MODBUS.ADR]\nAnalogInput 99999999999\n[STDMSG.ILM]\n[ALTMSG.ILM]\n[ILMVAR.DEF]\n", project));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "exception ooccured when reading data"}));
}

TEST_F(ProjectFile, ProjectNamesLoseTheirLastFourCharacters) {
    EXPECT_EQ(projectNameOfFile("Line3.orx"), "Line3");
    EXPECT_EQ(projectNameOfFile("Line3.ORX"), "Line3");
    EXPECT_EQ(projectNameOfFile(".orx"), "");
    EXPECT_EQ(projectNameOfFile("abc"), "");
    EXPECT_EQ(projectNameOfFile("\u65E5\u672C\u8A9E\u540D\u524D"), "\u65E5");
}

#ifndef _WIN32 // needs a file system that tells cases apart
TEST_F(ProjectFile, ExistingUpperCaseFilesAreRewritten) {
    Project project;
    writeBytes(folder.file("MODBUS.ADR"), "old");
    writeBytes(folder.file("PLANT.ORX"), "old");
    ASSERT_EQ(SaveProject(folder.path(), "Plant", project, context), SaveOutcome::Saved);
    EXPECT_EQ(fileBytes(folder.file("PLANT.ORX")), expectedProjectFile(project.IP));
    EXPECT_EQ(fileBytes(folder.file("MODBUS.ADR")), expectedAddressMap);
    EXPECT_FALSE(exists("Plant.orx"));
    EXPECT_FALSE(exists("modbus.adr"));
    ASSERT_TRUE(ReadProject(folder.file("Plant.orx"), project, context));
    EXPECT_FALSE(exists("modbus.adr"));
}
#endif

} // namespace
} // namespace orvista::DocMgrModule
