#include "model/PathRules.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

TEST(PathRules, JoinsWithOneSeparator) {
    const PathRules posix = PathRules::posix();
    EXPECT_EQ(posix.join("/plants", "line3.orx"), "/plants/line3.orx");
    EXPECT_EQ(posix.join("/", "line3.orx"), "/line3.orx");
    EXPECT_EQ(posix.join("", "line3.orx"), "/line3.orx");
    EXPECT_EQ(posix.join("/plants", ""), "/plants/");
    EXPECT_EQ(posix.join("/plants\\", "a"), "/plants\\/a");

    const PathRules windows = PathRules::windows();
    EXPECT_EQ(windows.join("C:\\Plants", "Line3.orx"), "C:\\Plants\\Line3.orx");
    EXPECT_EQ(windows.join("C:\\", "Line3.orx"), "C:\\Line3.orx");
    EXPECT_EQ(windows.join("C:/", "Line3.orx"), "C:/Line3.orx");
}

TEST(PathRules, SplitsAtTheLastSeparator) {
    const PathRules posix = PathRules::posix();
    EXPECT_EQ(posix.split("/plants/line3.orx"), (SplitPath{"/plants", "line3.orx"}));
    EXPECT_EQ(posix.split("/line3.orx"), (SplitPath{"", "line3.orx"}));
    EXPECT_EQ(posix.split("/plants/"), (SplitPath{"/plants", ""}));
    EXPECT_EQ(posix.split("a\\b"), std::nullopt);

    const PathRules windows = PathRules::windows();
    EXPECT_EQ(windows.split("C:\\P\\Line3.orx"), (SplitPath{"C:\\P", "Line3.orx"}));
    EXPECT_EQ(windows.split("C:\\P/Line3.orx"), (SplitPath{"C:\\P", "Line3.orx"}));
    EXPECT_EQ(windows.split("Line3.orx"), std::nullopt);
}

TEST(PathRules, WritesTheNativeForm) {
    EXPECT_EQ(PathRules::windows().nativeForm("C:/P\\a/b"), "C:\\P\\a\\b");
    EXPECT_EQ(PathRules::posix().nativeForm("/a\\b"), "/a\\b");
}

} // namespace
} // namespace orvista
