#include "compare/LeftBehindBitmaps.h"
#include "model/SystemPath.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using testing::fileBytes;
using ::testing::IsEmpty;
using testing::TemporaryFolder;
using testing::writeBytes;

/// A project whose messages name some bitmaps, in a folder of its own beside another one.
struct Moved {
    Moved() {
        project.ProjPath = here.path();
        project.STDMSG[0] = "CLEAR\r\nIMG 0 0 RED BLACK pump.bmp\r\nIMG 0 0 RED BLACK Alarm.BMP";
        project.ALTMSG[19] = "CLEAR\r\nimg 0 0 RED BLACK M\xFCll.bmp\r\nTEXT 0 0 RED BLACK \"text.bmp\"";
    }
    std::vector<std::string> leftBehind() const { return leftBehindBitmaps(project, there.path()); }

    TemporaryFolder here;
    TemporaryFolder there;
    Project project;
};

TEST(LeftBehindBitmaps, AreThoseThatMessagesNameAndOnlyTheOtherFolderHas) {
    const Moved moved;
    EXPECT_THAT(moved.leftBehind(), IsEmpty());
    for (const char* const name : {"PUMP.bmp", "alarm.bmp", "M\xC3\xBCll.bmp", "text.bmp", "other.bmp"})
        writeBytes(moved.there.file(name), "there");
    EXPECT_THAT(moved.leftBehind(), ElementsAre("alarm.bmp", "M\xC3\xBCll.bmp", "PUMP.bmp"));
    writeBytes(moved.here.file("ALARM.bmp"), "here");
    EXPECT_THAT(moved.leftBehind(), ElementsAre("M\xC3\xBCll.bmp", "PUMP.bmp"));
}

TEST(LeftBehindBitmaps, AreNeverFilesOfAnotherKind) {
    Moved moved;
    moved.project.STDMSG[0] = "CLEAR\r\nIMG 0 0 RED BLACK pump.png\r\nIMG 0 0 RED BLACK folder.bmp";
    writeBytes(moved.there.file("pump.png"), "there");
    std::filesystem::create_directory(systemPath(moved.there.file("folder.bmp")));
    EXPECT_THAT(moved.leftBehind(), IsEmpty());
}

TEST(LeftBehindBitmaps, AreNoneOfTheSameFolderAndOfOneThatIsGone) {
    const Moved moved;
    writeBytes(moved.here.file("pump.bmp"), "here");
    EXPECT_THAT(leftBehindBitmaps(moved.project, moved.here.path()), IsEmpty());
    EXPECT_THAT(leftBehindBitmaps(moved.project, moved.there.file("gone")), IsEmpty());
}

TEST(LeftBehindBitmaps, OfNamesThatDifferInCaseOneIsNamed) {
    const Moved moved;
    writeBytes(moved.there.file("PUMP.bmp"), "upper");
    writeBytes(moved.there.file("pump.bmp"), "lower");
    EXPECT_EQ(moved.leftBehind().size(), 1U);
}

TEST(CopyMissingFiles, NeverReplacesAFile) {
    const Moved moved;
    writeBytes(moved.there.file("pump.bmp"), "there");
    writeBytes(moved.there.file("alarm.bmp"), "there");
    writeBytes(moved.here.file("alarm.bmp"), "here");
    const std::vector<std::string> names{"pump.bmp", "alarm.bmp", "gone.bmp"};
    EXPECT_THAT(copyMissingFiles(names, moved.there.path(), moved.here.path()),
                ElementsAre("alarm.bmp", "gone.bmp"));
    EXPECT_EQ(fileBytes(moved.here.file("pump.bmp")), "there");
    EXPECT_EQ(fileBytes(moved.here.file("alarm.bmp")), "here");
    EXPECT_FALSE(std::filesystem::exists(systemPath(moved.here.file("gone.bmp"))));
}

} // namespace
} // namespace orvista
