#include "simulator/DeviceFolder.h"
#include "model/SystemPath.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

using testing::fileBytes;
using testing::TemporaryFolder;
using testing::writeBytes;

std::vector<std::string> names(const DeviceFolder& folder) {
    std::vector<std::string> result;
    for (const ListedFile& file : folder.list())
        result.push_back(file.name);
    return result;
}

TEST(DeviceFolderTest, KeepsBytesUnderTheNameOfTheDevicesEncoding) {
    const TemporaryFolder root;
    const DeviceFolder folder(root.path());
    const std::string noise("\x00\xFF\r\n\x1A", 5);
    EXPECT_TRUE(folder.store("caf\xE9.bmp", noise));
    EXPECT_EQ(fileBytes(root.file("café.bmp")), noise);
    EXPECT_EQ(folder.read("caf\xE9.bmp"), noise);
    EXPECT_EQ(names(folder), std::vector<std::string>{"caf\xE9.bmp"});
    EXPECT_TRUE(folder.store("caf\xE9.bmp", ""));
    EXPECT_EQ(folder.read("caf\xE9.bmp"), "");
    EXPECT_TRUE(folder.remove("caf\xE9.bmp"));
    EXPECT_FALSE(folder.remove("caf\xE9.bmp"));
    EXPECT_TRUE(std::filesystem::is_empty(systemPath(root.path())));
}

TEST(DeviceFolderTest, ListsPlainFilesInOrderAndNothingElse) {
    const TemporaryFolder root;
    writeBytes(root.file("b.bmp"), "12");
    writeBytes(root.file("A.bmp"), "1");
    writeBytes(root.file(".hidden"), "1");
    writeBytes(root.file("\xE6\x97\xA5.bmp"), "1"); // not in the device's encoding
    std::filesystem::create_directory(systemPath(root.file("folder")));
    std::error_code noLinksHere;
    std::filesystem::create_symlink("b.bmp", systemPath(root.file("link")), noLinksHere);
    const DeviceFolder folder(root.path());
    EXPECT_EQ(names(folder), (std::vector<std::string>{"A.bmp", "b.bmp"}));
    EXPECT_EQ(folder.find("b.bmp")->size, 2U);
}

TEST(DeviceFolderTest, ReadsFilesOf64MegabytesAndNoLongerOnes) {
    constexpr std::uintmax_t longest = std::uintmax_t{64} << 20;
    const TemporaryFolder root;
    writeBytes(root.file("a.bmp"), "");
    const DeviceFolder folder(root.path());
    std::filesystem::resize_file(systemPath(root.file("a.bmp")), longest);
    const auto bytes = folder.read("a.bmp");
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), longest);
    std::filesystem::resize_file(systemPath(root.file("a.bmp")), longest + 1);
    EXPECT_FALSE(folder.read("a.bmp"));
}

TEST(DeviceFolderTest, NeverLeavesTheFolder) {
    const TemporaryFolder outside;
    std::filesystem::create_directory(systemPath(outside.file("root")));
    writeBytes(outside.file("secret"), "secret");
    std::error_code noLinksHere;
    std::filesystem::create_symlink("../secret", systemPath(outside.file("root/link")), noLinksHere);
    std::filesystem::create_directory(systemPath(outside.file("root/folder")));
    const DeviceFolder folder(outside.file("root"));
    std::vector<std::string> names{"../secret", "/../secret", "folder", "folder/x", ".", "..", ""};
    if (!noLinksHere)
        names.emplace_back("link");
    for (const std::string& name : names) {
        EXPECT_FALSE(folder.read(name)) << name;
        EXPECT_FALSE(folder.store(name, "x")) << name;
        EXPECT_FALSE(folder.remove(name)) << name;
    }
    EXPECT_EQ(fileBytes(outside.file("secret")), "secret");
}

TEST(DeviceFolderTest, ReportsAFolderThatIsGone) {
    const DeviceFolder folder("/nonexistent/device");
    EXPECT_TRUE(folder.list().empty());
    EXPECT_FALSE(folder.store("a", "b"));
}

} // namespace
} // namespace orvista
