#include "display/FolderBitmaps.h"
#include "model/Files.h"
#include "model/SystemPath.h"

#include "tests/support/BitmapFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

using namespace std::string_literals;

namespace orvista {
namespace {

namespace fs = std::filesystem;

const std::string redDot = BitmapFile{1, 1, 24, {}, "\0\0\xFF\0"s}.bytes();
const std::string greenDot = BitmapFile{1, 1, 24, {}, "\0\xFF\0\0"s}.bytes();

class FolderWithBitmaps : public ::testing::Test {
protected:
    void store(const std::string& name, std::string_view bytes, fs::file_time_type changed = longAgo()) {
        {
            FileSink sink(path(name));
            sink.write(bytes);
            sink.close();
        }
        fs::last_write_time(systemPath(path(name)), changed);
    }
    std::string path(const std::string& name) const { return folder.path() + "/" + name; }
    Led dot(std::string_view name) const { return bitmaps.bitmap(name).image->leds.at(0); }

    static fs::file_time_type longAgo() { return fs::file_time_type::clock::now() - std::chrono::hours(1); }

    const testing::TemporaryFolder folder;
    const FolderBitmaps bitmaps{folder.path()};
};

TEST_F(FolderWithBitmaps, AreFoundInAnyCaseTheExactOneFirst) {
    store("Pump \xC3\x89.BMP", redDot); // UTF-8 on disk
    EXPECT_EQ(dot("pump \xC9.bmp"), Led::Red);
#ifndef _WIN32 // needs a file system that tells cases apart
    store("pump \xC3\x89.bmp", greenDot);
    EXPECT_EQ(dot("pump \xC9.bmp"), Led::Green);
    EXPECT_EQ(dot("Pump \xC9.BMP"), Led::Red);
    // Only ASCII letters are folded.
    EXPECT_EQ(bitmaps.bitmap("pump \xE9.bmp").image, nullptr);
#endif
}

TEST_F(FolderWithBitmaps, AreTheSameImageWhileTheFileStaysAsItIs) {
    store("a.bmp", redDot);
    const auto image = bitmaps.bitmap("a.bmp").image;
    EXPECT_EQ(bitmaps.bitmap("a.bmp").image, image);
#ifndef _WIN32 // there every spelling is a name of the file
    EXPECT_EQ(bitmaps.bitmap("A.BMP").image, image);
#endif
    store("a.bmp", greenDot, longAgo() + std::chrono::minutes(1));
    EXPECT_EQ(dot("a.bmp"), Led::Green);
    EXPECT_EQ(image->leds.at(0), Led::Red);
}

TEST_F(FolderWithBitmaps, AFileChangedWithinAClocksStepIsReadAgain) {
    const auto now = fs::file_time_type::clock::now();
    store("a.bmp", redDot, now);
    const auto image = bitmaps.bitmap("a.bmp").image;
    EXPECT_EQ(bitmaps.bitmap("a.bmp").image, image);
    store("a.bmp", greenDot, now);
    EXPECT_EQ(dot("a.bmp"), Led::Green);
}

TEST_F(FolderWithBitmaps, ComeAndGoWithTheirFiles) {
    EXPECT_EQ(bitmaps.bitmap("a.bmp").error, std::nullopt);
    store("A.bmp", redDot);
    EXPECT_EQ(dot("A.bmp"), Led::Red);
    fs::remove(systemPath(path("A.bmp")));
    const FoundBitmap gone = bitmaps.bitmap("A.bmp");
    EXPECT_EQ(gone.image, nullptr);
    EXPECT_EQ(gone.error, std::nullopt);
}

TEST_F(FolderWithBitmaps, SayWhyTheyCannotBeShown) {
    store("large.bmp", redDot);
    fs::resize_file(systemPath(path("large.bmp")), std::uintmax_t{64} << 20);
    EXPECT_EQ(bitmaps.bitmap("large.bmp").error, BitmapError::TooLong);
    store("cut.bmp", std::string_view(redDot).substr(0, redDot.size() - 3));
    EXPECT_EQ(bitmaps.bitmap("cut.bmp").error, BitmapError::CutShort);
    store("narrow.bmp", BitmapFile{0, 1, 24, {}, ""}.bytes());
    EXPECT_EQ(bitmaps.bitmap("narrow.bmp").error, BitmapError::BadSize);
    store("empty.bmp", "");
    EXPECT_EQ(bitmaps.bitmap("empty.bmp").error, BitmapError::NotABitmap);
}

TEST_F(FolderWithBitmaps, FoldersAndFilesElsewhereAreNotThere) {
    fs::create_directory(systemPath(path("folder.bmp")));
    fs::create_directory(systemPath(path("inner")));
    store("inner/a.bmp", redDot);
    for (const std::string& name : {"folder.bmp"s, "FOLDER.bmp"s, "inner/a.bmp"s, "inner\\a.bmp"s, "."s,
                                    ".."s, ""s, path("inner/a.bmp"), "a\0.bmp"s, std::string(5000, 'x')}) {
        EXPECT_EQ(bitmaps.bitmap(name).image, nullptr) << name;
        EXPECT_EQ(bitmaps.bitmap(name).error, std::nullopt) << name;
    }
    EXPECT_EQ(FolderBitmaps(path("inner/none")).bitmap("a.bmp").image, nullptr);
}

#ifndef _WIN32
TEST_F(FolderWithBitmaps, LinksAreFollowedWhereTheyMayBe) {
    store("a.bmp", redDot);
    fs::create_symlink("a.bmp", systemPath(path("link.bmp")));
    EXPECT_EQ(dot("link.bmp"), Led::Red);
    EXPECT_EQ(FolderBitmaps(folder.path(), FolderBitmaps::Links::LeftOut).bitmap("link.bmp").image, nullptr);
}
#endif

} // namespace
} // namespace orvista
