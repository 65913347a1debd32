#include "model/FileReplacing.h"
#include "model/Bytes.h"
#include "model/SystemPath.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <set>

#ifndef _WIN32
#include "tests/support/Unprivileged.h"

#include <sys/stat.h>
#endif

namespace orvista {
namespace {

using testing::fileBytes;
using testing::writeBytes;
namespace fs = std::filesystem;

class ReplacedFile : public ::testing::Test {
protected:
    std::set<std::string> names() const {
        std::set<std::string> found;
        for (const auto& entry : fs::directory_iterator(systemPath(folder.path())))
            found.insert(utf8Path(entry.path().filename()));
        return found;
    }

    testing::TemporaryFolder folder;
    std::string file = folder.file("Plant.orx");
};

TEST_F(ReplacedFile, IsMadeOrReplacedAndNothingElseStays) {
    replaceFile(file, "first");
    EXPECT_EQ(fileBytes(file), "first");
    replaceFile(file, "second version");
    EXPECT_EQ(fileBytes(file), "second version");
    replaceFile(file, "");
    EXPECT_EQ(fileBytes(file), "");
    EXPECT_EQ(names(), std::set<std::string>{"Plant.orx"});
}

TEST_F(ReplacedFile, LeavesEveryOtherFileAlone) {
    const std::set<std::string> others = {"Plant.orx.bak", "Plant.orx.new", "Plant.orx.new2", "orvista.new"};
    for (const std::string& name : others)
        writeBytes(folder.file(name), name);
    replaceFile(file, "bytes");
    for (const std::string& name : others)
        EXPECT_EQ(fileBytes(folder.file(name)), name);
    EXPECT_EQ(names().size(), others.size() + 1);
}

#ifndef _WIN32 // there the whole path has a limit, which the folder's takes a part of
TEST_F(ReplacedFile, MayHaveTheLongestName) {
    file = folder.file(std::string(251, 'n') + ".orx");
    replaceFile(file, "old");
    replaceFile(file, "new");
    EXPECT_EQ(fileBytes(file), "new");
    EXPECT_EQ(names().size(), 1U);
}
#endif

TEST_F(ReplacedFile, IsNotAFolder) {
    fs::create_directory(systemPath(file));
    EXPECT_THROW(replaceFile(file, "x"), OpenFailure);
    EXPECT_THROW(replaceFile(folder.file("missing/Plant.orx"), "x"), OpenFailure);
    EXPECT_EQ(names(), std::set<std::string>{"Plant.orx"});
}

#ifndef _WIN32
TEST_F(ReplacedFile, KeepsItsPermissions) {
    for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
        writeBytes(file, "old");
        ASSERT_EQ(chmod(file.c_str(), mode), 0);
        replaceFile(file, "new");
        struct stat status {};
        ASSERT_EQ(stat(file.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, mode);
        EXPECT_EQ(fileBytes(file), "new");
    }
}

TEST_F(ReplacedFile, IsTheOneThatLinksLeadTo) {
    fs::create_directory(folder.file("far"));
    writeBytes(folder.file("far/real"), "old");
    fs::create_symlink("far/real", folder.file("near"));
    fs::create_symlink(folder.file("near"), file);
    replaceFile(file, "new");
    EXPECT_EQ(fileBytes(folder.file("far/real")), "new");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_TRUE(fs::is_symlink(folder.file("near")));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.file("far")), {}), 1);
}

TEST_F(ReplacedFile, IsBehindFortyLinksAtMost) {
    const auto chain = [this](int links) {
        for (int i = 0; i <= links; ++i)
            fs::remove(folder.file(std::to_string(i)));
        writeBytes(folder.file("0"), "old");
        for (int i = 1; i <= links; ++i)
            fs::create_symlink(std::to_string(i - 1), folder.file(std::to_string(i)));
        return folder.file(std::to_string(links));
    };
    replaceFile(chain(40), "new");
    EXPECT_EQ(fileBytes(folder.file("0")), "new");
    EXPECT_THROW(replaceFile(chain(41), "new"), OpenFailure);
    EXPECT_EQ(fileBytes(folder.file("0")), "old");
}

TEST_F(ReplacedFile, LiesBesideItsNewOneForAMomentUnderANameThatIsFree) {
    // All of its names are taken but the last, and then all but the last of another's.
    const auto take = [this](const std::string& name) {
        for (int number = 1; number <= 100; ++number)
            writeBytes(folder.file(name + ".new" + (number == 1 ? "" : std::to_string(number))), "");
    };
    take("Plant.orx");
    take("orvista");
    EXPECT_THROW(replaceFile(file, "none"), OpenFailure);
    fs::remove(folder.file("Plant.orx.new100"));
    replaceFile(file, "first");
    EXPECT_EQ(fileBytes(file), "first");
    writeBytes(folder.file("Plant.orx.new100"), "");
    fs::remove(folder.file("orvista.new100"));
    replaceFile(file, "second");
    EXPECT_EQ(fileBytes(file), "second");
    EXPECT_EQ(names().size(), 200U);
}

TEST_F(ReplacedFile, IsMadeWhereADanglingLinkLeads) {
    fs::create_symlink("later", file);
    replaceFile(file, "new");
    EXPECT_EQ(fileBytes(folder.file("later")), "new");
    EXPECT_TRUE(fs::is_symlink(file));
}

TEST_F(ReplacedFile, IsWrittenInPlaceWhereTheFolderIsProtected) {
    writeBytes(file, "an old version that is longer than the new one");
    chmod(file.c_str(), 0666);
    chmod(folder.path().c_str(), 0555);
    EXPECT_TRUE(testing::holdsUnprivileged([&] {
        replaceFile(file, "new");
        return fileBytes(file) == "new";
    }));
    chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(names(), std::set<std::string>{"Plant.orx"});
}

TEST_F(ReplacedFile, StaysWhenItIsWriteProtected) {
    writeBytes(file, "old");
    chmod(file.c_str(), 0444);
    chmod(folder.path().c_str(), 0777);
    EXPECT_TRUE(testing::holdsUnprivileged([&] {
        try {
            replaceFile(file, "new");
        } catch (const OpenFailure&) {
            return fileBytes(file) == "old";
        }
        return false;
    }));
}
#endif

} // namespace
} // namespace orvista
