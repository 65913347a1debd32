#include "model/DeviceFileWriters.h"
#include "model/Bytes.h"

#include "tests/support/ExpectedFiles.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvista::DocMgrModule {
namespace {

using orvista::testing::expectedMessages;
using ::testing::HasSubstr;

template <typename Write>
std::string written(Write write) {
    MemorySink sink;
    write(sink);
    return sink.bytes();
}

TEST(AddressMapFile, HoldsThreeLinesWithValuesInColumnSixteen) {
    Project project;
    EXPECT_EQ(written([&](ByteSink& sink) { writeModbusAdr(sink, project); }),
              "AnalogInput    100\r\nDigitalInput   100\r\nAlertMessage   300\r\n");
    project.AnalogInput = -5;
    project.DigitalInput = 2147483647;
    project.AlertMessage = 0;
    project.RegularMessage = 999;
    EXPECT_EQ(written([&](ByteSink& sink) { writeModbusAdr(sink, project); }),
              "AnalogInput    -5\r\nDigitalInput   2147483647\r\nAlertMessage   0\r\n");
}

TEST(MessageFiles, HoldABlockForEveryMessage) {
    const Project project;
    EXPECT_EQ(written([&](ByteSink& sink) { writeStdMsg(sink, project); }), expectedMessages("STDMSG", 40));
    EXPECT_EQ(written([&](ByteSink& sink) { writeAltMsg(sink, project); }), expectedMessages("ALTMSG", 20));
}

TEST(MessageFiles, AnEmptyMessageIsWrittenAsClear) {
    Project project;
    project.STDMSG[4].clear();
    EXPECT_THAT(written([&](ByteSink& sink) { writeStdMsg(sink, project); }),
                HasSubstr("DEFMSG STDMSG5\r\nCLEAR\r\nENDMSG\r\n"));
}

TEST(MessageFiles, ATextThatEndsItsLineGetsAnEmptyLine) {
    Project project;
    project.ALTMSG[19] = "CLEAR\r\nTEXT 0 0 RED BLACK \" \xE9\"\r\n";
    EXPECT_EQ(written([&](ByteSink& sink) { writeAltMsg(sink, project); }),
              expectedMessages("ALTMSG", 20, 20, "CLEAR\r\nTEXT 0 0 RED BLACK \" \xE9\"\r\n"));
}

TEST(VariableFile, HoldsEveryVariableWithoutEmptyLines) {
    const Project project;
    EXPECT_EQ(written([&](ByteSink& sink) { writeIlmVar(sink, project); }),
              orvista::testing::expectedFloats() + orvista::testing::expectedBooleans(""));
}

TEST(VariableFile, WritesTextsAsTheyStand) {
    Project project;
    project.AnalogInput = 2147483647;
    project.DigitalInput = 7;
    project.RegVar[63] = {"RegVar64", "1e3 ", "", "x"};
    project.CoilVar[31] = {"CoilVar32", "1", "say \"on\"", ""};
    const std::string text = written([&](ByteSink& sink) { writeIlmVar(sink, project); });
    EXPECT_THAT(text, HasSubstr("DEFVAR RegVar64\r\n    type      float\r\n    address   2147483773\r\n"
                                "    default   1e3 \r\n    width     \r\n    precision x\r\nENDVAR\r\n"));
    EXPECT_THAT(text, HasSubstr("DEFVAR CoilVar32\r\n    type      bit\r\n    address   38\r\n"
                                "    default   1\r\n    ON        \"say \"on\"\"\r\n    OFF       \"\"\r\n"
                                "ENDVAR\r\n"));
}

TEST(PlayList, NamesTheRegularMessages) {
    EXPECT_EQ(written([](ByteSink& sink) { writeDefaultPls(sink, Project()); }),
              orvista::testing::expectedPlayList());
}

TEST(WritersOnPaths, TellAFileThatCannotBeCreated) {
    const orvista::testing::TemporaryFolder folder;
    const PathRules rules = PathRules::native();
    orvista::testing::ScriptedMessages messages;
    const FileContext context{rules, messages};
    const std::string path = rules.join(folder.file("missing"), "modbus.adr");
    EXPECT_FALSE(WriteModbusAdr(path, Project(), context));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(messages.shown[0].text, "unable to open " + path);
}

TEST(WritersOnPaths, ReplaceWhatStoodThere) {
    const orvista::testing::TemporaryFolder folder;
    const PathRules rules = PathRules::native();
    orvista::testing::ScriptedMessages messages;
    const FileContext context{rules, messages};
    const std::string path = folder.file("default.pls");
    orvista::testing::writeBytes(path, std::string(5000, 'x'));
    EXPECT_TRUE(WriteDefaultPls(path, Project(), context));
    EXPECT_EQ(orvista::testing::fileBytes(path), orvista::testing::expectedPlayList());
    EXPECT_TRUE(messages.shown.empty());
}

} // namespace
} // namespace orvista::DocMgrModule
