#include "link/ftp/DownloadStaging.h"
#include "model/SystemPath.h"

#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace orvista {
namespace {

namespace fs = std::filesystem;
using orvista::testing::fileBytes;
using orvista::testing::TemporaryFolder;
using orvista::testing::writeBytes;
using ::testing::ElementsAre;

class DownloadStagingTest : public ::testing::Test {
protected:
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(systemPath(folder.path())))
            names.push_back(utf8Path(entry.path().filename()));
        std::ranges::sort(names);
        return names;
    }
    /// A download of these files, up to the moment in which they are to appear.
    void stage(DownloadStaging& staging, const std::vector<std::string>& files) const {
        for (const std::string& name : files)
            writeBytes(staging.pathFor(folder.file(name)), "new " + name);
    }
    /// What a killed download leaves.
    void leave(const std::string& name, const std::vector<std::string>& files) const {
        fs::create_directory(systemPath(folder.file(name)));
        for (const std::string& file : files)
            writeBytes(folder.file(name + "/" + file), "left");
    }

    TemporaryFolder folder;
};

TEST_F(DownloadStagingTest, FilesAppearTogetherAndNothingElseStays) {
    writeBytes(folder.file("b.bmp"), "old");
    {
        DownloadStaging staging(folder.path(), PathRules::native());
        stage(staging, {"a.bmp", "b.bmp"});
        EXPECT_EQ(fileBytes(folder.file("b.bmp")), "old");
        staging.complete();
    }
    EXPECT_THAT(names(), ElementsAre("a.bmp", "b.bmp"));
    EXPECT_EQ(fileBytes(folder.file("b.bmp")), "new b.bmp");
}

TEST_F(DownloadStagingTest, AFolderInTheWayIsFoundBeforeAnythingIsReplaced) {
    fs::create_directory(systemPath(folder.file("b.bmp")));
    DownloadStaging staging(folder.path(), PathRules::native());
    stage(staging, {"a.bmp"});
    EXPECT_THROW(staging.pathFor(folder.file("b.bmp")), std::system_error);
}

TEST_F(DownloadStagingTest, AFailedRenameIsRolledBack) {
    writeBytes(folder.file("a.bmp"), "old a");
    writeBytes(folder.file("c.bmp"), "old c");
    {
        DownloadStaging staging(folder.path(), PathRules::native());
        stage(staging, {"a.bmp", "new.bmp", "in the way.bmp", "c.bmp"});
        fs::create_directory(systemPath(folder.file("in the way.bmp")));
        EXPECT_THROW(staging.complete(), std::system_error);
    }
    EXPECT_THAT(names(), ElementsAre("a.bmp", "c.bmp", "in the way.bmp"));
    EXPECT_EQ(fileBytes(folder.file("a.bmp")), "old a");
    EXPECT_EQ(fileBytes(folder.file("c.bmp")), "old c");
}

TEST_F(DownloadStagingTest, ANameThatComesTwiceIsRolledBackToTheFirst) {
    writeBytes(folder.file("a.bmp"), "old");
    {
        DownloadStaging staging(folder.path(), PathRules::native());
        stage(staging, {"a.bmp", "a.bmp", "b.bmp"});
        fs::create_directory(systemPath(folder.file("b.bmp")));
        EXPECT_THROW(staging.complete(), std::system_error);
    }
    EXPECT_EQ(fileBytes(folder.file("a.bmp")), "old");
}

TEST_F(DownloadStagingTest, NamesThatTheDiskCannotHold) {
    EXPECT_TRUE(DownloadStaging::canAppear(folder.file("a.bmp")));
    EXPECT_FALSE(DownloadStaging::canAppear(folder.file(std::string(300, 'x'))));
    DownloadStaging staging(folder.path(), PathRules::native());
    stage(staging, {"a.bmp", std::string(300, 'x'), "b.bmp"});
    staging.complete();
    EXPECT_EQ(fileBytes(folder.file("b.bmp")), "new b.bmp");
}

TEST_F(DownloadStagingTest, WhatKilledDownloadsLeftIsRemoved) {
    leave("download0.tmp", {"0", "1", "0.old"});
    leave("download17.tmp", {});
    { const DownloadStaging staging(folder.path(), PathRules::native()); }
    EXPECT_TRUE(names().empty());
}

TEST_F(DownloadStagingTest, WhatOthersMadeStays) {
    leave("download0.tmp", {"0", "letter.txt"});
    leave("download.tmp", {"0"});
    leave("download1x.tmp", {"0"});
    leave("download2.tmp", {});
    fs::create_directory(systemPath(folder.file("download2.tmp/3")));
    writeBytes(folder.file("download3.tmp"), "a file");
    { const DownloadStaging staging(folder.path(), PathRules::native()); }
    EXPECT_THAT(names(), ElementsAre("download.tmp", "download0.tmp", "download1x.tmp", "download2.tmp",
                                     "download3.tmp"));
    EXPECT_EQ(fileBytes(folder.file("download0.tmp/0")), "left");
}

#ifndef _WIN32
TEST_F(DownloadStagingTest, ARollBackBringsLinksBackAsLinks) {
    writeBytes(folder.file("elsewhere"), "theirs");
    fs::create_symlink("elsewhere", folder.file("a.bmp"));
    fs::create_symlink("nowhere", folder.file("b.bmp"));
    {
        DownloadStaging staging(folder.path(), PathRules::native());
        stage(staging, {"a.bmp", "b.bmp", "c.bmp"});
        fs::create_directory(folder.file("c.bmp"));
        EXPECT_THROW(staging.complete(), std::system_error);
    }
    EXPECT_EQ(fs::read_symlink(folder.file("a.bmp")), "elsewhere");
    EXPECT_EQ(fs::read_symlink(folder.file("b.bmp")), "nowhere");
    EXPECT_EQ(fileBytes(folder.file("elsewhere")), "theirs");
}

TEST_F(DownloadStagingTest, ALeftoverThatIsALinkIsNotFollowed) {
    leave("elsewhere", {"0"});
    fs::create_directory_symlink("elsewhere", folder.file("download0.tmp"));
    { const DownloadStaging staging(folder.path(), PathRules::native()); }
    EXPECT_THAT(names(), ElementsAre("download0.tmp", "elsewhere"));
    EXPECT_EQ(fileBytes(folder.file("elsewhere/0")), "left");
}
#endif

} // namespace
} // namespace orvista
