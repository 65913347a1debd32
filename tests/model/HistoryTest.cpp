#include "model/History.h"
#include "model/SystemPath.h"

#include "tests/support/TemporaryFolder.h"
#ifndef _WIN32
#include "tests/support/Unprivileged.h"

#include <sys/stat.h>
#endif

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvista::ConfigModule {
namespace {

using ::testing::ElementsAre;
namespace fs = std::filesystem;

const PathRules rules = PathRules::posix();

class RecentProjects : public ::testing::Test {
protected:
    void open(const std::string& name) { history.WriteHistory("/p", name); }
    std::string cache() const { return orvista::testing::fileBytes(folder.file("history.cache")); }

    orvista::testing::TemporaryFolder folder;
    History history{rules, folder.path()};
};

TEST_F(RecentProjects, TheLastFiveAreKeptInOrder) {
    for (const char* name : {"A", "B", "C", "D", "E", "F"})
        open(name);
    EXPECT_THAT(history.rows(), ElementsAre("/p/F", "/p/E", "/p/D", "/p/C", "/p/B"));
    open("C");
    EXPECT_THAT(history.rows(), ElementsAre("/p/C", "/p/F", "/p/E", "/p/D", "/p/B"));
    EXPECT_EQ(cache(), "/p/C\r\n/p/F\r\n/p/E\r\n/p/D\r\n/p/B\r\n");
}

TEST_F(RecentProjects, AfterARestartTheUnnamedProjectComesFirst) {
    for (const char* name : {"A", "B", "C", "D", "E"})
        open(name);
    History restarted(rules, folder.path());
    restarted.ReadHistory();
    restarted.WriteHistory(folder.path(), "");
    EXPECT_THAT(restarted.rows(), ElementsAre(folder.path() + "/", "/p/E", "/p/D", "/p/C", "/p/B"));
}

TEST_F(RecentProjects, SavingTwiceLeavesOneEntry) {
    open("A");
    open("A");
    EXPECT_THAT(history.rows(), ElementsAre("/p/A", "", "", "", ""));
    EXPECT_EQ(cache(), "/p/A\r\n");
}

TEST_F(RecentProjects, AnEntryThatDiffersInCaseOnlyIsDropped) {
    open("Line3");
    open("B");
    open("LINE3");
    EXPECT_THAT(history.rows(), ElementsAre("/p/LINE3", "/p/B", "", "", ""));
}

TEST_F(RecentProjects, AnEmptyOldRowTakesARow) {
    orvista::testing::writeBytes(folder.file("history.cache"), "/p/A\r\n\r\n/p/B\r\n");
    history.ReadHistory();
    open("C");
    EXPECT_THAT(history.rows(), ElementsAre("/p/C", "/p/A", "", "/p/B", ""));
    EXPECT_EQ(cache(), "/p/C\r\n/p/A\r\n/p/B\r\n");
}

TEST_F(RecentProjects, EightLinesAreReadAsTheFirstFive) {
    orvista::testing::writeBytes(folder.file("history.cache"), " 1 \r\n2\n3\r4\r\n5\r\n6\r\n7\r\n8\r\n");
    history.ReadHistory();
    EXPECT_THAT(history.rows(), ElementsAre("1", "2", "3", "4", "5"));
}

TEST_F(RecentProjects, TenThousandLinesAndNoiseAreWithstood) {
    std::string lines;
    for (int i = 0; i < 10'000; ++i)
        lines += "/p/" + std::to_string(i) + "\r\n";
    orvista::testing::writeBytes(folder.file("history.cache"), lines);
    history.ReadHistory();
    EXPECT_THAT(history.rows(), ElementsAre("/p/0", "/p/1", "/p/2", "/p/3", "/p/4"));

    std::string noise;
    for (int i = 0; i < 100'000; ++i)
        noise.push_back(static_cast<char>(i * 7919 >> 3));
    orvista::testing::writeBytes(folder.file("history.cache"), noise);
    history.ReadHistory();
    open("A");
    EXPECT_EQ(history.rows()[0], "/p/A");
}

TEST_F(RecentProjects, AMissingFileLeavesTheRows) {
    history.ReadHistory();
    EXPECT_THAT(history.rows(), ElementsAre("", "", "", "", ""));
    EXPECT_FALSE(history.holdsProject());
}

TEST_F(RecentProjects, AFolderInPlaceOfTheFileIsSilent) {
    fs::create_directory(systemPath(folder.file("history.cache")));
    history.ReadHistory();
    open("A");
    EXPECT_EQ(history.rows()[0], "/p/A");
}

#ifndef _WIN32
TEST_F(RecentProjects, AnUnreadableOrWriteProtectedFileIsSilent) {
    orvista::testing::writeBytes(folder.file("history.cache"), "/p/A\r\n");
    chmod(folder.path().c_str(), 0755);
    for (const mode_t mode : {0000, 0444}) {
        chmod(folder.file("history.cache").c_str(), mode);
        EXPECT_TRUE(orvista::testing::holdsUnprivileged([&] {
            history.ReadHistory();
            open("B");
            return history.rows()[0] == "/p/B" && history.rows()[1] == (mode == 0 ? "" : "/p/A");
        })) << mode;
    }
    EXPECT_EQ(cache(), "/p/A\r\n");
}

TEST_F(RecentProjects, AFullDiskIsSilent) {
    fs::create_symlink("/dev/full", folder.file("history.cache"));
    open("A");
    EXPECT_THAT(history.rows(), ElementsAre("/p/A", "", "", "", ""));
}
#endif

TEST_F(RecentProjects, AnyPathIsHeld) {
    const std::string plant = "\u65E5\u672C \xF0\x9F\x98\x80 %20";
    open(plant);
    History restarted(rules, folder.path());
    restarted.ReadHistory();
    EXPECT_EQ(restarted.rows()[0], "/p/" + plant);
}

TEST_F(RecentProjects, APathWithALineEndDoesNotBreakTheFile) {
    open("A");
    open("two\nlines");
    EXPECT_EQ(history.rows()[0], "/p/two\nlines");
    EXPECT_EQ(cache(), "/p/A\r\n");
}

TEST_F(RecentProjects, OnlyANamedRowIsAProject) {
    history.WriteHistory(folder.path(), "");
    EXPECT_FALSE(history.holdsProject());
    open("A");
    EXPECT_TRUE(history.holdsProject());
}

} // namespace
} // namespace orvista::ConfigModule
