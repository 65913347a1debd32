#include "link/DisplayFiles.h"
#include "link/TransferControls.h"
#include "model/ScratchFolder.h"
#include "tests/support/EnvironmentSetting.h"
#include "tests/support/FtpTestServer.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

namespace orvista {
namespace {

using testing::fileBytes;
using testing::FtpTestServer;

class UnwatchedTransfer final : public DocTsfModule::TransferProgress {
public:
    void showActivity(const std::string&) override {}
    void showFile(const std::string&, std::size_t, std::size_t) override {}
};

/// Fetches from the port into a folder; the failure's words, or nothing.
std::string fetched(std::uint16_t port, const std::string& folder, bool& connected) {
    UnwatchedTransfer progress;
    connected = true;
    try {
        fetchDisplayFiles({"127.0.0.1", port}, folder, progress, makeTransferControl);
        return {};
    } catch (const FetchFailure& failure) {
        connected = failure.connected();
        return failure.what();
    }
}

class DisplayFilesTest : public ::testing::Test {
protected:
    std::uint16_t port() const { return static_cast<std::uint16_t>(server.port()); }

    FtpTestServer server;
    ScratchFolder folder;
    bool connected = false;
};

TEST_F(DisplayFilesTest, FetchesTheDeviceFilesAndTheBitmaps) {
    server.putDeviceFiles();
    server.put("pump.bmp", "BM");
    server.put("notes.txt", "not a display's");
    EXPECT_EQ(fetched(port(), folder.path(), connected), "");
    EXPECT_EQ(fileBytes(folder.path() + "/stdmsg.ilm"), "remote stdmsg.ilm");
    EXPECT_EQ(fileBytes(folder.path() + "/pump.bmp"), "BM");
    EXPECT_FALSE(std::filesystem::exists(folder.path() + "/notes.txt"));
}

TEST_F(DisplayFilesTest, WhatIsOnlyLookedAtStaysInMemoryUntilItIsLarge) {
    UnwatchedTransfer progress;
    server.putDeviceFiles();
    server.put("pump.bmp", "BM");
    const FetchedFiles small = fetchDisplayFiles({"127.0.0.1", port()}, progress, makeTransferControl);
    EXPECT_FALSE(small.folder());
    ASSERT_EQ(small.inMemory().size(), 6U);
    EXPECT_EQ(small.inMemory()[2].name, "stdmsg.ilm");
    EXPECT_EQ(small.inMemory()[2].bytes, "remote stdmsg.ilm");
    EXPECT_EQ(small.inMemory()[5].name, "pump.bmp");

    const std::string manyBytes(FetchedFiles::mostInMemory + 1, 'x');
    server.put("large.bmp", manyBytes);
    std::string path;
    {
        const FetchedFiles large = fetchDisplayFiles({"127.0.0.1", port()}, progress, makeTransferControl);
        path = large.folder().value();
        EXPECT_EQ(large.inMemory().size(), 0U);
        EXPECT_EQ(fileBytes(path + "/stdmsg.ilm"), "remote stdmsg.ilm");
        EXPECT_EQ(fileBytes(path + "/large.bmp"), manyBytes);
        EXPECT_EQ(fileBytes(path + "/pump.bmp"), "BM");
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(DisplayFilesTest, WhatIsOnlyLookedAtFailsAsADownloadDoes) {
    UnwatchedTransfer progress;
    server.putDeviceFiles();
    std::filesystem::remove(server.file("altmsg.ilm"));
    try {
        fetchDisplayFiles({"127.0.0.1", port()}, progress, makeTransferControl);
        FAIL() << "nothing was told";
    } catch (const FetchFailure& failure) {
        EXPECT_STREQ(failure.what(), "altmsg.ilm could not be fetched: 550 /altmsg.ilm is not retrievable.");
    }
}

/// Why the files of a display with this fault cannot be looked at.
/// \param temporary where the program keeps them meanwhile
std::string refusalOf(const std::string& fault, const ScratchFolder& temporary) {
    FtpTestServer server({"--fault", fault});
    server.putDeviceFiles();
    const testing::EnvironmentSetting setting("TMPDIR", temporary.path());
    try {
        UnwatchedTransfer progress;
        fetchDisplayFiles({"127.0.0.1", static_cast<std::uint16_t>(server.port())}, progress,
                          makeTransferControl);
    } catch (const FetchFailure& failure) {
        return failure.what();
    }
    return {};
}

TEST(EndlessDisplayTest, IsRefusedAndLeavesNothing) {
    const ScratchFolder temporary;
    EXPECT_EQ(refusalOf("endless-retrieve", temporary),
              "modbus.adr could not be fetched: it is longer than the display said");
    EXPECT_EQ(refusalOf("endless-retrieve-no-size", temporary),
              "modbus.adr could not be fetched: it is too long");
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
}

TEST_F(DisplayFilesTest, ADisplayThatLacksAFileLeavesTheFolderAsItWas) {
    server.putDeviceFiles();
    std::filesystem::remove(server.file("altmsg.ilm"));
    EXPECT_EQ(fetched(port(), folder.path(), connected),
              "altmsg.ilm could not be fetched: 550 /altmsg.ilm is not retrievable.");
    EXPECT_TRUE(connected);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(DisplayFilesTest, TellsThatNobodyListens) {
    constexpr std::uint16_t portOfNobody = 1;
    EXPECT_EQ(fetched(portOfNobody, folder.path(), connected), "connection refused");
    EXPECT_FALSE(connected);
}

TEST_F(DisplayFilesTest, TellsThatNoControlCanBeMade) {
    UnwatchedTransfer progress;
    try {
        fetchDisplayFiles({"127.0.0.1", port()}, folder.path(), progress, [](auto&) { return nullptr; });
        FAIL() << "nothing was told";
    } catch (const FetchFailure& failure) {
        EXPECT_STREQ(failure.what(), "transfers need the library libcurl, which is missing");
        EXPECT_FALSE(failure.connected());
    }
}

TEST(ScratchFolderTest, IsForTheUserAloneAndGoesWithAllThatIsInIt) {
    namespace fs = std::filesystem;
    std::string path;
    {
        const ScratchFolder folder;
        path = folder.path();
        EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
        fs::create_directories(path + "/a/b");
    }
    EXPECT_FALSE(fs::exists(path));
}

} // namespace
} // namespace orvista
