#include "model/FolderCopy.h"
#include "model/FileCopy.h"
#include "model/SystemPath.h"

#ifndef _WIN32
#include "tests/support/FullDisk.h"
#endif
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

namespace fs = std::filesystem;
using testing::fileBytes;
using testing::writeBytes;

class FolderCopyTest : public ::testing::Test {
protected:
    FolderCopyTest() {
        fs::create_directories(systemPath(source() + "/inner"));
        writeBytes(source() + "/A.orx", "project");
        writeBytes(source() + "/\xC3\xA9.bmp", "picture");
        writeBytes(source() + "/inner/left", "out");
    }
    std::string source() const { return from.file("plant"); }

    testing::TemporaryFolder from;
    testing::TemporaryFolder parent;
};

TEST_F(FolderCopyTest, CopiesTheFilesIntoANewFolderOfTheSameName) {
    const std::string copy = copyToNewFolder(source(), parent.path());
    EXPECT_EQ(copy, parent.file("plant"));
    EXPECT_EQ(fileBytes(copy + "/A.orx"), "project");
    EXPECT_EQ(fileBytes(copy + "/\xC3\xA9.bmp"), "picture");
    EXPECT_FALSE(fs::exists(copy + "/inner"));
}

TEST_F(FolderCopyTest, NeverTouchesWhatIsThere) {
    fs::create_directory(systemPath(parent.file("plant")));
    writeBytes(parent.file("plant 2"), "a file");
    EXPECT_EQ(copyToNewFolder(source(), parent.path()), parent.file("plant 3"));
    EXPECT_EQ(copyToNewFolder(source(), parent.path()), parent.file("plant 4"));
    EXPECT_TRUE(fs::is_empty(systemPath(parent.file("plant"))));
    EXPECT_EQ(fileBytes(parent.file("plant 2")), "a file");
}

TEST_F(FolderCopyTest, MakesCopiesThatCanBeWritten) {
    fs::permissions(source() + "/A.orx", fs::perms::owner_read);
    const std::string copy = copyToNewFolder(source(), parent.path());
    EXPECT_NE(fs::status(copy + "/A.orx").permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST_F(FolderCopyTest, LeavesNothingWhereAFileCannotBeCopied) {
    fs::create_directory(parent.file("target"));
    writeBytes(parent.file("target") + "/A.orx", "in the way");
    EXPECT_THROW(copyFiles(source(), parent.file("target")), std::system_error);
    EXPECT_EQ(fileBytes(parent.file("target") + "/A.orx"), "in the way");
    EXPECT_THROW(copyToNewFolder(from.file("missing"), parent.path()), std::system_error);
    EXPECT_FALSE(fs::exists(parent.file("missing")));
    EXPECT_THROW(copyToNewFolder(source(), parent.file("nowhere")), std::system_error);
}

#ifndef _WIN32
TEST_F(FolderCopyTest, OfAFullDiskNothingIsLeftAndTheSystemsReasonIsGiven) {
    const testing::FullDisk disk(3);
    try {
        copyToNewFolder(source(), parent.path());
        ADD_FAILURE() << "it was copied";
    } catch (const std::system_error& failure) {
        EXPECT_EQ(failure.code(), std::errc::file_too_large); // that is what the limit says
    }
    EXPECT_TRUE(fs::is_empty(systemPath(parent.path())));
}

TEST_F(FolderCopyTest, OfAFileThatCannotBeCopiedWholeNothingIsLeft) {
    {
        const testing::FullDisk disk(3);
        EXPECT_THROW(copyFile(source() + "/A.orx", parent.file("A.orx")), fs::filesystem_error);
    }
    EXPECT_TRUE(fs::is_empty(systemPath(parent.path())));
}

TEST_F(FolderCopyTest, AFileKeepsItsPermissions) {
    fs::permissions(source() + "/A.orx", fs::perms::owner_read);
    copyFile(source() + "/A.orx", parent.file("A.orx"));
    EXPECT_EQ(fs::status(parent.file("A.orx")).permissions(), fs::perms::owner_read);
}
#endif

} // namespace
} // namespace orvista
