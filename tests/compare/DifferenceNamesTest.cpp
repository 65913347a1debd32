#include "compare/DifferenceNames.h"

#include "tests/compare/HeldCases.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using testing::TwoFolders;

void changeMessage(const TwoFolders& folders, const std::string& name) {
    folders.replace("altmsg.ilm", "DEFMSG " + name + "\r\n", "DEFMSG " + name + "\r\nCLEAR\r\n");
}

TEST(DifferenceNames, NothingThatCountsHasNoText) {
    const TwoFolders folders;
    EXPECT_EQ(differingText(folders.compared()), "");
    folders.replace("default.pls", "STDMSG1\r\n", "STDMSG2\r\n");
    EXPECT_EQ(differingText(folders.compared()), "");
}

TEST(DifferenceNames, UpToThreeAreNamedAndMoreAreCounted) {
    const TwoFolders folders;
    changeMessage(folders, "ALTMSG2");
    EXPECT_EQ(differingText(folders.compared()), "ALTMSG2");
    changeMessage(folders, "ALTMSG3");
    EXPECT_EQ(differingText(folders.compared()), "ALTMSG2, ALTMSG3");
    changeMessage(folders, "ALTMSG4");
    EXPECT_EQ(differingText(folders.compared()), "ALTMSG2, ALTMSG3, ALTMSG4");
    changeMessage(folders, "ALTMSG5");
    EXPECT_EQ(differingText(folders.compared()), "ALTMSG2, ALTMSG3 and 2 more");
}

TEST(DifferenceNames, ItemsComeBeforeFilesAndFilesBeforeBitmaps) {
    const TwoFolders folders;
    std::filesystem::remove(folders.theirs.file("pump.bmp"));
    std::filesystem::remove(folders.theirs.file("modbus.adr"));
    changeMessage(folders, "ALTMSG2");
    const auto names = differingNames(folders.compared());
    ASSERT_GE(names.size(), 3U);
    EXPECT_EQ(names[names.size() - 2], "modbus.adr");
    EXPECT_EQ(names.back(), "pump.bmp");
    EXPECT_THAT(names, ::testing::Contains("ALTMSG2"));
}

} // namespace
} // namespace orvista
