#include "items/RecoveryFile.h"
#include "tests/support/ExampleProject.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

#include <utility>

namespace orvista {
namespace {

std::string repeated(const std::string& text, int count) {
    std::string texts;
    for (; count > 0; --count)
        texts += text;
    return texts;
}

/// The texts of a project in which nothing was set but what is given.
std::string plainTexts(const std::string& settings, const std::string& firstScript,
                       const std::string& notApplied) {
    return settings + "3:100" + "3:100" + "3:300" + "3:320" + repeated("3:0.01:71:3", 64) +
           repeated("1:02:ON3:OFF", 32) + firstScript + repeated("5:CLEAR", 59) + notApplied;
}

Project plainProject() {
    Project project;
    project.ProjPath = "/plant";
    project.ProjName = "Line3";
    project.SerialPort = "COM1";
    project.IP = "";
    project.ResetAddressMap();
    return project;
}

const std::string plainSettings = "6:/plant5:Line34:COM10:";

void expectSame(const Project& one, const Project& other) {
    EXPECT_EQ(one.ProjPath, other.ProjPath);
    EXPECT_EQ(one.ProjName, other.ProjName);
    EXPECT_EQ(one.SerialPort, other.SerialPort);
    EXPECT_EQ(one.IP, other.IP);
    EXPECT_EQ(one.AnalogInput, other.AnalogInput);
    EXPECT_EQ(one.DigitalInput, other.DigitalInput);
    EXPECT_EQ(one.AlertMessage, other.AlertMessage);
    EXPECT_EQ(one.RegularMessage, other.RegularMessage);
    EXPECT_EQ(one.RegVar, other.RegVar);
    EXPECT_EQ(one.CoilVar, other.CoilVar);
    EXPECT_EQ(one.STDMSG, other.STDMSG);
    EXPECT_EQ(one.ALTMSG, other.ALTMSG);
}

TEST(RecoveryFile, HoldsTheFormsLinesThenTheTexts) {
    // The checksum of "foobar" as published with the algorithm.
    EXPECT_EQ(recoveryFrame("foobar"), "orvista-recovery 1\n85944171f73967e8\nfoobar");
    EXPECT_EQ(recoveryFrame(""), "orvista-recovery 1\ncbf29ce484222325\n");
    EXPECT_EQ(recoveryFrame("bar"), "orvista-recovery 1\n003934191339461a\nbar");
    EXPECT_EQ(recoveryBytes(plainProject(), {}), recoveryFrame(plainTexts(plainSettings, "5:CLEAR", "1:0")));
    Project project = plainProject();
    project.STDMSG[0] = "CLEAR\r\n\x80";
    EXPECT_EQ(recoveryBytes(project, {{named("ALTMSG2"), {"CLEAR\r\nACT"}},
                                      {named("address map"), {"1", "", "2", "3"}}}),
              recoveryFrame(plainTexts(plainSettings, "8:CLEAR\r\n\x80",
                                       "1:27:ALTMSG21:110:CLEAR\r\nACT11:address map1:41:10:1:21:3")));
}

TEST(RecoveryFile, BringsEverythingBack) {
    Project project = testing::exampleProject();
    project.ProjPath = "C:\\Pl\xC3\xA4ne";
    project.ProjName = "Halle 3";
    project.IP = "127.0.0.1";
    project.SerialPort = "COM7";
    project.AnalogInput = -2147483647 - 1;
    project.RegularMessage = 2147483647;
    project.RegVar[63] = {"RegVar64", "-2.50", "8", "1"};
    project.CoilVar[31] = {"CoilVar32", "1", "12:34", ""};
    project.ALTMSG[19] = std::string("\0\n\r\x1A\xFF", 5);
    const std::vector<NotAppliedTexts> notApplied{{named("ALTMSG20"), {""}},
                                                  {named("RegVar1"), {"1", "2", "3"}}};
    const auto work = readRecovery(recoveryBytes(project, notApplied));
    ASSERT_TRUE(work);
    expectSame(work->project, project);
    EXPECT_EQ(work->notApplied, notApplied);
}

TEST(RecoveryFile, BringsBackAsManyTextsAsPagesHave) {
    const std::vector<NotAppliedTexts> most(
        maximumNotAppliedItems, {named("STDMSG1"), std::vector<std::string>(maximumNotAppliedTexts, "a")});
    const auto work = readRecovery(recoveryBytes(plainProject(), most));
    ASSERT_TRUE(work);
    EXPECT_EQ(work->notApplied, most);
}

TEST(RecoveryFile, IsNotReadWhereAByteIsMissingOrAnother) {
    const std::string whole = recoveryBytes(plainProject(), {{named("STDMSG1"), {"ACT"}}});
    ASSERT_TRUE(readRecovery(whole));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        EXPECT_FALSE(readRecovery(std::string_view(whole).substr(0, at))) << at;
        std::string other = whole;
        other[at] = static_cast<char>(other[at] ^ 1);
        EXPECT_FALSE(readRecovery(other)) << at;
    }
    EXPECT_FALSE(readRecovery(whole + "x"));
}

TEST(RecoveryFile, IsNotReadWhereTheTextsAreNotThoseOfAProject) {
    const auto isRead = [](const std::string& texts) {
        return readRecovery(recoveryFrame(texts)).has_value();
    };
    const auto withRegularStart = [](const std::string& text) {
        const std::string texts = plainTexts(plainSettings, "5:CLEAR", "1:0");
        const std::string start = "3:320";
        return std::string(texts).replace(texts.find(start), start.size(), text);
    };
    ASSERT_TRUE(isRead(withRegularStart("10:2147483647")));
    const std::vector<std::pair<std::string, std::string>> wrong{
        {"an address that is no number", withRegularStart("1:x")},
        {"an address with a blank", withRegularStart("4: 320")},
        {"an address too large", withRegularStart("10:2147483648")},
        {"too few texts", plainTexts(plainSettings, "", "1:0")},
        {"too many texts", plainTexts(plainSettings, "5:CLEAR", "1:00:")},
        {"more items than there are", plainTexts(plainSettings, "5:CLEAR", "1:1")},
        {"more items than pages have", plainTexts(plainSettings, "5:CLEAR", "1:9" + repeated("0:1:0", 9))},
        {"more texts than pages have", plainTexts(plainSettings, "5:CLEAR", "1:10:1:9" + repeated("0:", 9))},
        {"a length beyond the end", plainTexts(plainSettings, "5:CLEAR", "1:")},
        {"a length beyond all numbers", plainTexts("99999999999999999999:", "5:CLEAR", "1:0")},
        {"a negative length", plainTexts("-1:", "5:CLEAR", "1:0")},
        {"nothing", ""}};
    for (const auto& [what, texts] : wrong)
        EXPECT_FALSE(isRead(texts)) << what;
}

TEST(RecoveryFile, IsReadWithoutTextsOfWhatIsNoItem) {
    const auto work = readRecovery(
        recoveryFrame(plainTexts(plainSettings, "5:CLEAR", "1:28:STDMSG411:11:a7:STDMSG31:11:b")));
    ASSERT_TRUE(work);
    EXPECT_EQ(work->notApplied, (std::vector<NotAppliedTexts>{{named("STDMSG3"), {"b"}}}));
}

TEST(RecoveryFile, OfAnotherVersionIsNotRead) {
    std::string bytes = recoveryBytes(plainProject(), {});
    bytes[bytes.find('1')] = '2';
    EXPECT_FALSE(readRecovery(bytes));
}

TEST(RecoveryFile, TellsANewerVersion) {
    EXPECT_TRUE(isRecoveryOfNewerVersion("orvista-recovery 2\nx"));
    EXPECT_TRUE(isRecoveryOfNewerVersion("orvista-recovery 10\n"));
    for (const char* const other :
         {"", "orvista-recovery", "orvista-recovery ", "orvista-recovery 1\nx", "orvista-recovery 2x\n",
          "orvista-recovery x\n", "orvista-recovery 99999999999\n", "Orvista-recovery 2\n"})
        EXPECT_FALSE(isRecoveryOfNewerVersion(other)) << other;
    EXPECT_FALSE(isRecoveryOfNewerVersion(recoveryBytes(plainProject(), {})));
}

} // namespace
} // namespace orvista
