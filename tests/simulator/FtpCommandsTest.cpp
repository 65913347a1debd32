#include "simulator/FtpCommands.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

TEST(ParseFtpCommand, SplitsAtTheFirstBlankAndKeepsTheRest) {
    EXPECT_EQ(parseFtpCommand("NOOP"), (FtpCommand{"NOOP", ""}));
    EXPECT_EQ(parseFtpCommand("stor pump house .bmp "), (FtpCommand{"STOR", "pump house .bmp "}));
    EXPECT_EQ(parseFtpCommand("PASS "), (FtpCommand{"PASS", ""}));
    EXPECT_EQ(parseFtpCommand("RETR  a"), (FtpCommand{"RETR", " a"}));
}

TEST(ParseFtpCommand, FindsNoCommandInNoise) {
    for (const char* line : {"", " NOOP", "123",
                             "\xFF\xF4\xF2"
                             "ABOR",
                             "ABCDEFGHI", "STOR\ta"})
        EXPECT_EQ(parseFtpCommand(line), FtpCommand()) << line;
}

TEST(DeviceFileName, TakesBareNamesWithAnyVisibleByte) {
    EXPECT_EQ(deviceFileName("modbus.adr"), "modbus.adr");
    EXPECT_EQ(deviceFileName("/modbus.adr"), "modbus.adr");
    EXPECT_EQ(deviceFileName("./modbus.adr"), "modbus.adr");
    EXPECT_EQ(deviceFileName("100% #1 caf\xE9.bmp"), "100% #1 caf\xE9.bmp");
    EXPECT_EQ(deviceFileName("a..b"), "a..b");
}

TEST(DeviceFileName, RefusesWhatLiesElsewhereOrCannotBeKept) {
    for (const char* name : {"", ".", "..", "/", "//etc/passwd", "../x", "a/b", "/../x", "./../x", "a\\b",
                             "..\\x", "C:x", "c:\\x", ".hidden", "a\tb", "a\x7F", "\x01"})
        EXPECT_FALSE(deviceFileName(name)) << name;
    EXPECT_FALSE(deviceFileName(std::string_view("a\0b", 3)));
    EXPECT_TRUE(deviceFileName(std::string(200, 'x')));
    EXPECT_FALSE(deviceFileName(std::string(201, 'x')));
}

TEST(NamesRootFolder, KnowsTheOneFolder) {
    for (const char* name : {"", "/", ".", "./", "/."})
        EXPECT_TRUE(namesRootFolder(name)) << name;
    for (const char* name : {"..", "/..", "//", "sub", "/sub"})
        EXPECT_FALSE(namesRootFolder(name)) << name;
}

TEST(DescribeFtpCommand, SpeaksInWordsAndKeepsPasswordsToItself) {
    EXPECT_EQ(describeFtpCommand({"STOR", "modbus.adr"}), "Store modbus.adr");
    EXPECT_EQ(describeFtpCommand({"PASS", "secret"}), "Password");
    EXPECT_EQ(describeFtpCommand({"XYZ", "1"}), "XYZ, which is not known");
    EXPECT_EQ(describeFtpCommand({}), "Not a command");
}

TEST(Listings, HoldSizeTimeAndName) {
    // 2026-01-31 12:05:09 UTC.
    const ListedFile file{"pump house.bmp", 1234, 1769861109};
    EXPECT_EQ(longListLine(file), "-rw-r--r-- 1 admin admin 1234 Jan 31 2026 pump house.bmp\r\n");
    EXPECT_EQ(factListLine(file), "type=file;size=1234;modify=20260131120509; pump house.bmp\r\n");
    EXPECT_EQ(ftpTime(0), "19700101000000");
    EXPECT_EQ(ftpTime(-5), "19700101000000");
    EXPECT_EQ(ftpTime(INT64_MAX), "99991231235959");
}

TEST(PassiveReplies, CarryThePort) {
    EXPECT_EQ(passiveReply(0x7F000001, 0x1F90), "227 Entering Passive Mode (127,0,0,1,31,144).");
    EXPECT_EQ(passiveReply(0xFFFEFDFC, 65535), "227 Entering Passive Mode (255,254,253,252,255,255).");
    EXPECT_EQ(extendedPassiveReply(7), "229 Entering Extended Passive Mode (|||7|)");
}

} // namespace
} // namespace orvista
