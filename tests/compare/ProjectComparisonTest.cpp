#include "compare/ProjectComparison.h"
#include "compare/FileComparison.h"
#include "model/Bytes.h"
#include "model/DeviceFiles.h"
#include "tests/support/ExampleProject.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Line = ComparedLine::Kind;

/// What a display that got the project's files gives back.
Project asOnDisplay(const Project& project) {
    Project read;
    for (const DeviceFile* const file : {&modbusAdrFile, &ilmVarFile, &stdMsgFile, &altMsgFile}) {
        MemorySink sink;
        file->writeSection(sink, project);
        MemorySource source(sink.bytes());
        file->readSection(source, read, nullptr);
    }
    return read;
}

TEST(ProjectComparison, OfAProjectAndTheDisplayThatGotItFindsNothing) {
    const Project example = testing::exampleProject();
    EXPECT_THAT(compareItems(example, asOnDisplay(example)), IsEmpty());
    EXPECT_THAT(compareItems(Project{}, asOnDisplay(Project{})), IsEmpty());
    // Written and read twice, as after a download and an upload.
    EXPECT_THAT(compareItems(example, asOnDisplay(asOnDisplay(example))), IsEmpty());
}

TEST(ProjectComparison, NamesEveryItemAndFieldThatDiffers) {
    const Project before;
    Project after;
    after.AnalogInput = 200;
    after.AlertMessage = -5;
    after.RegVar[2].defaultValue = "1.5";
    after.RegVar[63] = {"RegVar64", "0.0", "8", "1"};
    after.CoilVar[0] = {"CoilVar1", "1", "OPEN", "SHUT"};
    after.STDMSG[11] = "CLEAR\r\nSTILL 5";
    after.ALTMSG[1] = "STILL 5";
    EXPECT_THAT(
        compareItems(before, after),
        ElementsAre(
            ItemDifference{named("address map"),
                           {changed("address map", "AnalogInput", "100", "200"),
                            changed("address map", "AlertMessage", "300", "-5")},
                           {}},
            ItemDifference{named("RegVar3"), {changed("RegVar3", "default", "0.0", "1.5")}, {}},
            ItemDifference{
                named("RegVar64"),
                {changed("RegVar64", "width", "7", "8"), changed("RegVar64", "precision", "3", "1")},
                {}},
            ItemDifference{named("CoilVar1"),
                           {changed("CoilVar1", "default", "0", "1"), changed("CoilVar1", "on", "ON", "OPEN"),
                            changed("CoilVar1", "off", "OFF", "SHUT")},
                           {}},
            ItemDifference{
                named("STDMSG12"), {}, {{Line::Same, "CLEAR", 1, 1}, {Line::Added, "STILL 5", 0, 2}}},
            ItemDifference{
                named("ALTMSG2"), {}, {{Line::Removed, "CLEAR", 1, 0}, {Line::Added, "STILL 5", 0, 1}}}));
}

TEST(ProjectComparison, LeavesOutWhatNoReaderReads) {
    Project other;
    other.RegularMessage = 400;
    other.SerialPort = "COM2";
    other.IP = "127.0.0.9";
    other.ProjName = "OTHER";
    other.modified = true;
    EXPECT_THAT(compareItems(Project{}, other), IsEmpty());
}

class FileComparison : public ::testing::Test {
protected:
    std::optional<FileDifference> compared(const std::string& before, const std::string& after) {
        testing::writeBytes(folder_.file("before"), before);
        testing::writeBytes(folder_.file("after"), after);
        return compareFiles({folder_.file("before")}, {folder_.file("after")});
    }

    testing::TemporaryFolder folder_;
};

TEST_F(FileComparison, FindsTheFirstByteThatDiffers) {
    std::string other(100'000, 'x');
    const std::string same = other;
    other[70'000] = 'y';
    EXPECT_EQ(compared("abc", "abc"), std::nullopt);
    EXPECT_EQ(compared("", ""), std::nullopt);
    EXPECT_EQ(compared("abc", "abX"), (FileDifference{3, 3, 2}));
    EXPECT_EQ(compared("abc", "abcd"), (FileDifference{3, 4, 3}));
    EXPECT_EQ(compared(same, same), std::nullopt);
    EXPECT_EQ(compared(same, other), (FileDifference{100'000, 100'000, 70'000}));
}

TEST_F(FileComparison, SaysWhichFileCannotBeRead) {
    testing::writeBytes(folder_.file("a.bmp"), "abc");
    try {
        compareFiles({folder_.file("a.bmp")}, {folder_.file("a.bmp.gone")});
        FAIL() << "read a file that is not there";
    } catch (const std::system_error& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("a.bmp.gone"));
    }
}

} // namespace
} // namespace orvista
