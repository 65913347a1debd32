#include "model/ProjectFileBackup.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orvista::DocMgrModule {
namespace {

using namespace orvista::testing;
namespace fs = std::filesystem;

class Backup : public ::testing::Test {
protected:
    bool exists(const std::string& path) const { return fs::exists(fs::symlink_status(systemPath(path))); }

    TemporaryFolder folder;
    std::string file = folder.file("Plant.orx");
    std::string backup = folder.file("Plant.orx.bak");
};

TEST_F(Backup, MovesTheFileAsideUntilTheSaveSucceeded) {
    writeBytes(file, "good");
    ProjectFileBackup kept(file, backup);
    EXPECT_FALSE(exists(file));
    EXPECT_EQ(fileBytes(backup), "good");
    writeBytes(file, "new");
    kept.created();
    kept.discard();
    EXPECT_EQ(fileBytes(file), "new");
    EXPECT_FALSE(exists(backup));
}

TEST_F(Backup, PutsTheFileBackWhenTheNewOneCannotBeCreated) {
    writeBytes(file, "good");
    ProjectFileBackup kept(file, backup);
    kept.restore();
    EXPECT_EQ(fileBytes(file), "good");
    EXPECT_FALSE(exists(backup));
}

TEST_F(Backup, NeverReplacesTheOneOfAnEarlierFailedSave) {
    writeBytes(file, "half");
    writeBytes(backup, "good");
    ProjectFileBackup kept(file, backup);
    EXPECT_EQ(fileBytes(file), "half");
    kept.restore();
    EXPECT_EQ(fileBytes(file), "half");
    EXPECT_EQ(fileBytes(backup), "good");
    kept.discard();
    EXPECT_FALSE(exists(backup));
}

TEST_F(Backup, IsNotMadeOfWhatIsNoFile) {
    const ProjectFileBackup ofNothing(file, backup);
    EXPECT_FALSE(exists(backup));
    fs::create_directory(systemPath(file));
    const ProjectFileBackup ofFolder(file, backup);
    EXPECT_TRUE(fs::is_directory(systemPath(file)));
    EXPECT_FALSE(exists(backup));
}

TEST_F(Backup, LeavesAFolderOfItsNameAlone) {
    fs::create_directory(systemPath(backup));
    writeBytes(file, "good");
    ProjectFileBackup kept(file, backup);
    EXPECT_EQ(fileBytes(file), "good");
    kept.discard();
    EXPECT_TRUE(fs::is_directory(systemPath(backup)));
}

#ifndef _WIN32
TEST_F(Backup, IsNotMadeOfALink) {
    writeBytes(folder.file("real"), "good");
    fs::create_symlink(folder.file("real"), file);
    const ProjectFileBackup kept(file, backup);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_FALSE(exists(backup));
}

TEST_F(Backup, IsNotMadeOverADanglingLink) {
    writeBytes(file, "good");
    fs::create_symlink(folder.file("gone"), backup);
    const ProjectFileBackup kept(file, backup);
    EXPECT_EQ(fileBytes(file), "good");
    EXPECT_TRUE(fs::is_symlink(backup));
}
#endif

} // namespace
} // namespace orvista::DocMgrModule
