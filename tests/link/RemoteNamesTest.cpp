#include "link/ftp/RemoteNames.h"

#include <gmock/gmock.h>

#include <string>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(RemoteFileName, IsTheBytesOfTheScripts) {
    EXPECT_EQ(remoteFileName("logo.bmp"), "logo.bmp");
    EXPECT_EQ(remoteFileName("\xC3\xA9.bmp"), "\xE9.bmp");
    EXPECT_EQ(remoteFileName("100% #1 a..b.bmp"), "100% #1 a..b.bmp");
    EXPECT_EQ(remoteFileName("\xE2\x82\xAC.bmp"), "\x80.bmp") << "the euro sign";
}

TEST(RemoteFileName, NeedsADeviceForm) {
    EXPECT_EQ(remoteFileName("\xD0\xB6.bmp"), std::nullopt) << "a Cyrillic letter";
    EXPECT_EQ(remoteFileName("\xFF.bmp"), std::nullopt) << "not UTF-8";
    EXPECT_EQ(remoteFileName(""), std::nullopt);
}

TEST(RemoteFileName, MustNotBreakACommandLine) {
    for (const std::string& name :
         {std::string("a\r\nDELE b.bmp"), std::string("a\nb.bmp"), std::string("a\rb.bmp"),
          std::string("a\0b.bmp", 7), std::string("a\x7F.bmp"), std::string("a\xC2\x85.bmp")})
        EXPECT_EQ(remoteFileName(name), std::nullopt) << name;
}

class LocalFileName : public ::testing::TestWithParam<const char*> {};

TEST_P(LocalFileName, IsNotWritten) {
    EXPECT_EQ(localFileName(GetParam(), PathRules::posix()), std::nullopt);
    EXPECT_EQ(localFileName(GetParam(), PathRules::windows()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(HostileNames, LocalFileName,
                         ::testing::Values("", ".", "..", "../up.bmp", "..\\up.bmp", "a/b.bmp", "a\\b.bmp",
                                           "/root.bmp", "\\\\server\\share.bmp", "C:evil.bmp", "C:\\evil.bmp",
                                           "file.txt:s.bmp", "a..bmp", "bell\a.bmp", "line\nend.bmp",
                                           "\x7F.bmp", "\x81.bmp", "CON.bmp", "con.bmp", "prn.bmp", "AUX.bmp",
                                           "nul.bmp", "NUL .bmp", "nul.x.bmp", "com1.bmp", "COM9.bmp",
                                           "lpt1.bmp", "LPT\xB2.bmp", "CONIN$.bmp", "conout$.bmp"));

TEST(LocalFileNames, OrdinaryOnesAreKept) {
    for (const char* name :
         {"logo.bmp", "a b.bmp", "100%.bmp", "#1.bmp", "-x.bmp", ".bmp", "COM.bmp", "COM0.bmp", "COM10.bmp",
          "COMX.bmp", "COMPANY1.bmp", "LPTS1.bmp", "console.bmp", "lpt.bmp", "a.con.bmp"}) {
        EXPECT_EQ(localFileName(name, PathRules::posix()), name);
        EXPECT_EQ(localFileName(name, PathRules::windows()), name);
    }
    EXPECT_EQ(localFileName("\xE9.bmp", PathRules::posix()), "\xC3\xA9.bmp");
}

TEST(LocalFileNames, SomeCannotStandOnWindowsOnly) {
    for (const char* name : {"what?.bmp", "*.bmp", "a|b.bmp", "<a>.bmp", "\"a\".bmp"}) {
        EXPECT_EQ(localFileName(name, PathRules::posix()), name);
        EXPECT_EQ(localFileName(name, PathRules::windows()), std::nullopt);
    }
}

TEST(RemoteListing, LinesEndInAnyPiece) {
    RemoteListing listing;
    EXPECT_TRUE(listing.append("modbus.adr\r"));
    EXPECT_TRUE(listing.append("\nlo"));
    EXPECT_TRUE(listing.append("go.bmp\n\r\n\nlast"));
    EXPECT_TRUE(listing.finish());
    EXPECT_THAT(listing.names(), ElementsAre("last", "logo.bmp", "modbus.adr"));
}

TEST(RemoteListing, EmptyListHasNoNames) {
    RemoteListing listing;
    EXPECT_TRUE(listing.finish());
    EXPECT_THAT(listing.names(), IsEmpty());
}

TEST(RemoteListing, RepetitionsCountOnce) {
    RemoteListing listing;
    listing.append("b\na\nb\nA\n");
    EXPECT_TRUE(listing.finish());
    EXPECT_THAT(listing.names(), ElementsAre("A", "a", "b"));
}

TEST(RemoteListing, VariantsPreferLowerCase) {
    RemoteListing listing;
    listing.append("MODBUS.ADR\nModbus.adr\nmodbus.adr\nSTDMSG.ILM\n");
    listing.finish();
    EXPECT_EQ(listing.variantOf("modbus.adr"), "modbus.adr");
    EXPECT_EQ(listing.variantOf("stdmsg.ilm"), "STDMSG.ILM");
    EXPECT_EQ(listing.variantOf("altmsg.ilm"), "altmsg.ilm");
    EXPECT_TRUE(listing.has("STDMSG.ILM"));
    EXPECT_FALSE(listing.has("stdmsg.ilm"));
}

TEST(RemoteListing, TenThousandNamesAreTheMost) {
    std::string list;
    for (std::size_t number = 0; number < RemoteListing::nameLimit; ++number)
        list += std::to_string(number) + "\r\n";
    RemoteListing full;
    EXPECT_TRUE(full.append(list));
    EXPECT_TRUE(full.finish());
    EXPECT_EQ(full.names().size(), 10'000u);

    RemoteListing tooLong;
    EXPECT_FALSE(tooLong.append(list + "one more\r\n"));
    EXPECT_FALSE(tooLong.finish());

    RemoteListing tooLongAtTheEnd;
    EXPECT_TRUE(tooLongAtTheEnd.append(list + "one more"));
    EXPECT_FALSE(tooLongAtTheEnd.finish());
}

TEST(RemoteListing, EachOfTenThousandNamesMayHave510Bytes) {
    std::string list;
    for (int number = 10'000; number < 20'000; ++number)
        list += std::to_string(number) + std::string(505, 'x') + "\r\n";
    RemoteListing full;
    EXPECT_TRUE(full.append(list));
    EXPECT_TRUE(full.finish());
    EXPECT_EQ(full.names().size(), 10'000u);
    EXPECT_EQ(full.names().back().size(), 510u);

    RemoteListing tooLong;
    EXPECT_FALSE(tooLong.append("x" + list));
    EXPECT_FALSE(tooLong.finish());
}

TEST(RemoteListing, ALineWithoutEndIsBounded) {
    RemoteListing listing;
    const std::string piece(64 * 1024, 'x');
    std::size_t taken = 0;
    while (listing.append(piece) && taken <= RemoteListing::byteLimit)
        taken += piece.size();
    EXPECT_LE(taken, RemoteListing::byteLimit);
    EXPECT_FALSE(listing.finish());
}

} // namespace
} // namespace orvista
