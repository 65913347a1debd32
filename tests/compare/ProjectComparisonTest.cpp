#include "compare/ProjectComparison.h"
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
    NamedFile left(const std::string& name, const std::string& bytes) { return inFolder(left_, name, bytes); }
    NamedFile right(const std::string& name, const std::string& bytes) {
        return inFolder(right_, name, bytes);
    }

private:
    static NamedFile inFolder(const testing::TemporaryFolder& folder, const std::string& name,
                              const std::string& bytes) {
        testing::writeBytes(folder.file(name), bytes);
        return {name, folder.file(name)};
    }

    testing::TemporaryFolder left_;
    testing::TemporaryFolder right_;
};

TEST_F(FileComparison, FindsTheFirstByteThatDiffers) {
    const std::string long1(100'000, 'x');
    std::string long2 = long1;
    long2[70'000] = 'y';
    EXPECT_THAT(compareFiles({left("A.bmp", "abc"), left("B.bmp", "abc"), left("c.bmp", "abc"),
                              left("D.bmp", ""), left("E.bmp", long1)},
                             {right("a.BMP", "abc"), right("B.bmp", "abX"), right("c.bmp", "abcd"),
                              right("D.bmp", ""), right("E.bmp", long2)}),
                ElementsAre(FileDifference{"B.bmp", 3, 3, 2}, FileDifference{"c.bmp", 3, 4, 3},
                            FileDifference{"E.bmp", 100'000, 100'000, 70'000}));
}

TEST_F(FileComparison, NamesFilesOfOneSideOnly) {
    EXPECT_THAT(compareFiles({left("b.bmp", "12")}, {right("A.bmp", "123")}),
                ElementsAre(FileDifference{"A.bmp", std::nullopt, 3, std::nullopt},
                            FileDifference{"b.bmp", 2, std::nullopt, std::nullopt}));
}

TEST_F(FileComparison, CountsTheLastOfNamesThatDifferInCaseOnly) {
    const NamedFile first = left("one", "old");
    const NamedFile last = left("two", "new");
    EXPECT_THAT(compareFiles({{"LOGO.BMP", first.path}, {"logo.bmp", last.path}}, {right("Logo.bmp", "new")}),
                IsEmpty());
}

TEST_F(FileComparison, SaysWhichFileCannotBeRead) {
    NamedFile missing = left("a.bmp", "abc");
    missing.path += ".gone";
    try {
        compareFiles({missing}, {right("a.bmp", "abc")});
        FAIL() << "read a file that is not there";
    } catch (const std::system_error& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("a.bmp.gone"));
    }
}

} // namespace
} // namespace orvista
