#include "model/DeviceFileReaders.h"
#include "model/Bytes.h"

#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orvista::ConfigModule {
namespace {

using orvista::testing::ScriptedMessages;
using Shown = ScriptedMessages::Shown;

Project withAddresses(std::string_view text) {
    Project project;
    project.RegularMessage = 1;
    MemorySource source(text);
    readModbusAdr(source, project);
    return project;
}

Project withVariables(std::string_view text, Project project = {}) {
    MemorySource source(text);
    readIlmVar(source, project);
    return project;
}

Project withMessages(std::string_view text) {
    Project project;
    MemorySource source(text);
    readStdMsg(source, project);
    return project;
}

TEST(ReadModbusAdr, SkipsOneCharacterAfterTheKeyword) {
    EXPECT_EQ(withAddresses("AnalogInput=200").AnalogInput, 200);
    EXPECT_EQ(withAddresses("AnalogInput200").AnalogInput, 0) << "the skipped character is the 2, then 00";
    EXPECT_EQ(withAddresses("DigitalInput x").DigitalInput, 0);
    EXPECT_EQ(withAddresses("AnalogInput").AnalogInput, 0);
}

TEST(ReadModbusAdr, SetsTheRegularStartBehindTheEmergencyBlock) {
    const Project project = withAddresses("AlertMessage   500\r\n");
    EXPECT_EQ(project.AlertMessage, 500);
    EXPECT_EQ(project.RegularMessage, 520);
    EXPECT_EQ(project.AnalogInput, 100);
}

TEST(ReadModbusAdr, StartsFromTheDefaults) {
    EXPECT_EQ(withAddresses("").RegularMessage, 320);
    EXPECT_EQ(withAddresses("Unknown 7\n").AlertMessage, 300);
}

TEST(ReadModbusAdr, IsForgivingAboutCaseAndSpacing) {
    const Project project =
        withAddresses("  aNALOGiNPUT  7.5  \nDIGITALINPUT\t 1 2 \nalertmessage - 4\nanaloginput 8.5");
    EXPECT_EQ(project.AnalogInput, 8) << "the last value counts, halves go to even";
    EXPECT_EQ(project.DigitalInput, 12) << "blanks inside a number are skipped";
    EXPECT_EQ(project.AlertMessage, -4);
    EXPECT_EQ(project.RegularMessage, 16);
}

TEST(ReadModbusAdr, AnAddressThatDoesNotFitIsAReadingFailure) {
    const orvista::testing::TemporaryFolder folder;
    const PathRules rules = PathRules::native();
    for (const char* text :
         {"AnalogInput 7\nDigitalInput 2147483648\nAlertMessage 9",
          "AnalogInput 7\nAlertMessage 2147483640\nDigitalInput 9", "AnalogInput 7\nDigitalInput 1e400"}) {
        ScriptedMessages messages;
        Project project;
        orvista::testing::writeBytes(folder.file("modbus.adr"), text);
        ReadModbusAdr(folder.file("modbus.adr"), project, {rules, messages});
        ASSERT_EQ(messages.shown.size(), 1U) << text;
        EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "exception ooccured when reading data"}));
        EXPECT_EQ(project.AnalogInput, 7);
        EXPECT_EQ(project.DigitalInput, 100);
        EXPECT_EQ(project.AlertMessage, 300);
        EXPECT_EQ(project.RegularMessage, 320);
    }
}

TEST(ReadMessages, MoreThanFortyFillFortyRows) {
    std::string text;
    for (int n = 1; n <= 45; ++n)
        text += "DEFMSG STDMSG1\nM" + std::to_string(n) + "\nENDMSG\n";
    const Project project = withMessages(text);
    for (int n = 1; n <= 40; ++n)
        EXPECT_EQ(project.STDMSG[static_cast<std::size_t>(n - 1)], "M" + std::to_string(n) + "\r\n");
}

TEST(ReadMessages, ThreeLeaveTheOtherRowsUntouched) {
    Project project;
    project.STDMSG.fill("before");
    MemorySource source("DEFMSG STDMSG1\na\nENDMSG\nDEFMSG STDMSG2\nb\nENDMSG\nDEFMSG STDMSG3\nc\nENDMSG\n");
    readStdMsg(source, project);
    EXPECT_EQ(project.STDMSG[0], "a\r\n");
    EXPECT_EQ(project.STDMSG[1], "b\r\n");
    EXPECT_EQ(project.STDMSG[2], "c\r\n");
    for (std::size_t row = 3; row < 40; ++row)
        EXPECT_EQ(project.STDMSG[row], "before");
}

TEST(ReadMessages, TheNumberInTheFileIsNotUsed) {
    const Project project = withMessages("DEFMSG STDMSG7\nseven\nENDMSG\n");
    EXPECT_EQ(project.STDMSG[0], "seven\r\n");
    EXPECT_EQ(project.STDMSG[6], "CLEAR");
}

TEST(ReadMessages, ABareOpeningLineIgnoresItsBody) {
    const Project project = withMessages("DEFMSG\nlost\nENDMSG\nDEFMSG x\nkept\nENDMSG\n");
    EXPECT_EQ(project.STDMSG[0], "kept\r\n");
    EXPECT_EQ(project.STDMSG[1], "CLEAR");
}

TEST(ReadMessages, EmptyLinesAreKeptAndOuterBlanksLost) {
    const Project project = withMessages("defmsg x\n\n  a  b  \n\n\tc\xA0 \nendmsg rest\n");
    EXPECT_EQ(project.STDMSG[0], "\r\na  b\r\n\r\n\tc\xA0\r\n");
}

TEST(ReadMessages, LinesBehindAnEndAreAppendedAndStoredByTheNextEnd) {
    const Project project = withMessages("DEFMSG x\na\nENDMSG\nb\nENDMSG\n");
    EXPECT_EQ(project.STDMSG[0], "a\r\n");
    EXPECT_EQ(project.STDMSG[1], "a\r\nb\r\n");
}

TEST(ReadMessages, AnEndRightBehindTheOpeningIsTheFirstLine) {
    const Project project = withMessages("DEFMSG x\nENDMSG\nENDMSG\n");
    EXPECT_EQ(project.STDMSG[0], "ENDMSG\r\n");
}

TEST(ReadMessages, EmergencyMessagesFillTwentyRows) {
    std::string text;
    for (int n = 0; n < 25; ++n)
        text += "DEFMSG A\nx\nENDMSG\n";
    Project project;
    MemorySource source(text);
    readAltMsg(source, project);
    EXPECT_EQ(project.ALTMSG[19], "x\r\n");
    EXPECT_EQ(project.STDMSG[0], "CLEAR");
}

TEST(ReadMessages, EveryByteSurvives) {
    std::string line;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '\r' && byte != '\n')
            line.push_back(static_cast<char>(byte));
    }
    const Project project = withMessages("DEFMSG x\n" + line + "\nENDMSG\n");
    EXPECT_EQ(project.STDMSG[0], line + "\r\n");
}

TEST(ReadIlmVar, FillsRowsByAddressAlone) {
    const Project project = withVariables("DEFVAR RegVar9\ntype float\naddress 104\ndefault 1.5\nwidth 6\n"
                                          "precision 1\nENDVAR\n"
                                          "DEFVAR other\nTYPE BIT\nADDRESS 131\nDEFAULT 1\nON \"Run\"\n"
                                          "OFF \"Stop\"\nendvar\n");
    EXPECT_EQ(project.RegVar[2], (FloatVariable{"RegVar3", "1.5", "6", "1"}));
    EXPECT_EQ(project.RegVar[8], (FloatVariable{"RegVar9", "0.0", "7", "3"}));
    EXPECT_EQ(project.CoilVar[31], (BooleanVariable{"CoilVar32", "1", "Run", "Stop"}));
}

TEST(ReadIlmVar, OffsetsRoundToTheEvenRow) {
    const auto rowOf = [](const std::string& address) {
        const Project project =
            withVariables("DEFVAR v\ntype float\naddress " + address + "\ndefault 9\nENDVAR\n");
        for (std::size_t row = 0; row < 64; ++row) {
            if (project.RegVar[row].defaultValue == "9")
                return static_cast<int>(row);
        }
        return -1;
    };
    EXPECT_EQ(rowOf("101"), 0);
    EXPECT_EQ(rowOf("103"), 2);
    EXPECT_EQ(rowOf("105"), 2);
    EXPECT_EQ(rowOf("99"), 0);
    EXPECT_EQ(rowOf("98"), -1);
    EXPECT_EQ(rowOf("226"), 63);
    EXPECT_EQ(rowOf("227"), -1) << "63.5 rounds to 64";
    EXPECT_EQ(rowOf("1 0 4"), 2);
}

TEST(ReadIlmVar, AnAddressOutsideTheTableChangesNothing) {
    const Project defaults;
    for (const char* address : {"230", "-1e18", "99999999999999999999", "1e999", ""}) {
        const Project project =
            withVariables("DEFVAR v\ntype FLOAT\naddress " + std::string(address) + "\ndefault 9\nENDVAR\n");
        EXPECT_EQ(project.RegVar, defaults.RegVar) << address;
    }
}

TEST(ReadIlmVar, QuotesGoByPosition) {
    const Project project =
        withVariables("DEFVAR v\ntype bit\naddress 100\nON \"X\"\nOFF 'Lit'\nON ab\nENDVAR\n");
    EXPECT_EQ(project.CoilVar[0], (BooleanVariable{"CoilVar1", "0", "X", "Lit"}));
}

TEST(ReadIlmVar, ABitBlockWithoutTextsSetsEmptyOnes) {
    const Project project = withVariables("DEFVAR v\ntype bit\naddress 100\nENDVAR\n");
    EXPECT_EQ(project.CoilVar[0], (BooleanVariable{"CoilVar1", "0", "", ""}));
}

TEST(ReadIlmVar, FieldsOutsideABlockLastUntilTheNextOpening) {
    const Project defaults;
    EXPECT_EQ(withVariables("type bit\naddress 100\nENDVAR\n").CoilVar, defaults.CoilVar);
    const Project project =
        withVariables("DEFVAR v\ntype bit\naddress 100\nON \"a\"\nENDVAR\nON \"b\"\nDEFVAR w\ntype float\n"
                      "address 100\ndefault 1\nENDVAR\nENDVAR\n");
    EXPECT_EQ(project.CoilVar[0].onText, "a");
    EXPECT_EQ(project.RegVar[0], (FloatVariable{"RegVar1", "1", "7", "3"}));
}

TEST(ReadIlmVar, UnknownTypesKeysAndEmptyValuesAreIgnored) {
    const Project defaults;
    EXPECT_EQ(withVariables("DEFVAR v\ntype int\naddress 100\ndefault 9\nENDVAR\n").RegVar, defaults.RegVar);
    const Project project =
        withVariables("DEFVAR v\ntype float\ncolour red\naddress 100\nwidth \nprecision\nENDVAR\n");
    EXPECT_EQ(project.RegVar[0], (FloatVariable{"RegVar1", "0.0", "7", "3"}));
}

TEST(ReadIlmVar, StartsFromTheDefaults) {
    Project project;
    project.RegVar[5].width = "2";
    project.CoilVar[5].onText = "x";
    const Project read = withVariables("", project);
    EXPECT_EQ(read.RegVar, Project().RegVar);
    EXPECT_EQ(read.CoilVar, Project().CoilVar);
}

TEST(ReadersOnPaths, TellAFileThatCannotBeOpened) {
    const orvista::testing::TemporaryFolder folder;
    const PathRules rules = PathRules::native();
    ScriptedMessages messages;
    Project project;
    project.AnalogInput = 7;
    ReadModbusAdr(folder.file("modbus.adr"), project, {rules, messages});
    ReadStdMsg(folder.path(), project, {rules, messages});
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "Unable to open " + folder.file("modbus.adr")}));
    EXPECT_EQ(messages.shown[1], (Shown{MessageIcon::None, "Unable to open " + folder.path()}));
    EXPECT_EQ(project.AnalogInput, 7) << "nothing was read";
}

/// Gives some lines and then fails, as a disk that goes bad does.
class FailingSource final : public ByteSource {
public:
    explicit FailingSource(std::string_view bytes) : good_(bytes) {}
    std::size_t read(char* buffer, std::size_t size) override {
        const std::size_t count = good_.read(buffer, size);
        if (count == 0)
            throw ReadFailure(std::make_error_code(std::errc::io_error));
        return count;
    }

private:
    MemorySource good_;
};

TEST(Readers, KeepTheRowsReadBeforeAFailure) {
    Project project;
    FailingSource messages("DEFMSG a\none\nENDMSG\nDEFMSG b\ntwo");
    EXPECT_THROW(readStdMsg(messages, project), ReadFailure);
    EXPECT_EQ(project.STDMSG[0], "one\r\n");
    EXPECT_EQ(project.STDMSG[1], "CLEAR");
    FailingSource addresses("AnalogInput 7\nDigital");
    EXPECT_THROW(readModbusAdr(addresses, project), ReadFailure);
    EXPECT_EQ(project.AnalogInput, 7);
}

TEST(ReadIlmVar, TheFirstRowBehindATableChangesNothing) {
    const Project defaults;
    for (const char* block : {"type float\naddress 228\ndefault 9\n", "type bit\naddress 132\ndefault 1\n"}) {
        const Project project = withVariables(std::string("DEFVAR v\n") + block + "ENDVAR\n");
        EXPECT_EQ(project.RegVar, defaults.RegVar) << block;
        // Behind one table the next one begins.
        EXPECT_EQ(project.CoilVar, defaults.CoilVar) << block;
        EXPECT_EQ(project.STDMSG, defaults.STDMSG) << block;
    }
    EXPECT_EQ(withVariables("DEFVAR v\ntype float\naddress 226\ndefault 9\nENDVAR\n").RegVar[63].defaultValue,
              "9");
    EXPECT_EQ(withVariables("DEFVAR v\ntype bit\naddress 131\ndefault 1\nENDVAR\n").CoilVar[31].defaultValue,
              "1");
}

TEST(ReadIlmVar, ASecondEndOfABlockStoresNothing) {
    const Project project = withVariables("DEFVAR v\ntype float\naddress 100\ndefault 1\nENDVAR\n"
                                          "address 102\ndefault 2\nENDVAR\n");
    EXPECT_EQ(project.RegVar[0].defaultValue, "1");
    EXPECT_EQ(project.RegVar[1].defaultValue, "0.0");
}

TEST(ReadMessages, AMessageNameMayHaveOneCharacter) {
    EXPECT_EQ(withMessages("DEFMSG x\nCLEAR\nENDMSG\n").STDMSG[0], "CLEAR\r\n");
    EXPECT_EQ(withMessages("DEFMSGx\nignored\nENDMSG\n").STDMSG[0], "CLEAR") << "a skipped one is none";
}

TEST(ReadMessages, LinesThatCrossTheReadersBufferAreWhole) {
    const std::string line(40'000, 'x');
    const Project project = withMessages("DEFMSG a\n" + line + "\r\n" + line + "\r" + line + "\nENDMSG\n");
    EXPECT_EQ(project.STDMSG[0], line + "\r\n" + line + "\r\n" + line + "\r\n");
}

} // namespace
} // namespace orvista::ConfigModule
