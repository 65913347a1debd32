#include "script/PlaceholderScan.h"

#include "tests/support/ReferenceScan.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace orvista {
namespace {

/// Columns of the used slots; fails when a used slot follows an empty one.
std::vector<int> columns(const PlaceholderScan& scan) {
    const std::vector<int> used(scan.VarPos.begin(),
                                scan.VarPos.begin() + static_cast<std::ptrdiff_t>(scan.fieldCount()));
    for (std::size_t slot = scan.fieldCount(); slot < scan.VarPos.size(); ++slot)
        EXPECT_EQ(scan.VarPos[slot], -1);
    return used;
}

void expectScan(const std::string& text, const std::string& shown, const std::vector<int>& expectedColumns) {
    const PlaceholderScan scan = scanPlaceholders(text);
    EXPECT_EQ(scan.DisplayText, shown) << text;
    EXPECT_EQ(columns(scan), expectedColumns) << text;
}

std::string repeated(const std::string& piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

TEST(PlaceholderScan, TextWithoutPlaceholdersStaysAsItIs) {
    expectScan("", "", {});
    expectScan("Pump 3 \"on\"", "Pump 3 \"on\"", {});
    expectScan("v", "v", {});
    expectScan("5v", "5v", {});
}

TEST(PlaceholderScan, TwoBarePlaceholdersTakeNeighbouringColumns) {
    expectScan("%v%v", "  ", {0, 1});
}

TEST(PlaceholderScan, WidthReservesThatManyBlanks) {
    expectScan("A%12vB", "A            B", {1});
    expectScan("%3v", "   ", {0});
    expectScan("%1v", " ", {0});
    expectScan("%007v|", "       |", {0});
}

TEST(PlaceholderScan, WidthZeroCountsAsOne) {
    expectScan("%0v", " ", {0});
    expectScan("%000v.", " .", {0});
    expectScan("%" + std::string(100'000, '0') + "v", " ", {0});
}

TEST(PlaceholderScan, ZeroToFivePlaceholders) {
    expectScan("a", "a", {});
    expectScan("a%v", "a ", {1});
    expectScan("a%vb%2v", "a b  ", {1, 3});
    expectScan("a%vb%2vc%3v", "a b  c   ", {1, 3, 6});
    expectScan("a%vb%2vc%3vd%v", "a b  c   d ", {1, 3, 6, 10});
    expectScan("a%vb%2vc%3vd%ve%9vf", "a b  c   d ef", {1, 3, 6, 10});
}

TEST(PlaceholderScan, FifthPlaceholderLeavesNoBlank) {
    expectScan("%v%v%v%v%v", "    ", {0, 1, 2, 3});
}

TEST(PlaceholderScan, NeverLooksBackAfterRemovingASurplusPlaceholder) {
    // Removing the inner "%v" leaves "%5v", which would be one more to remove.
    expectScan("%v%v%v%v%%v5v", "    %5v", {0, 1, 2, 3});
    expectScan("%v%v%v%v%%vv", "    %v", {0, 1, 2, 3});
    expectScan("%v%v%v%v%v%v%7vx%8v", "    x", {0, 1, 2, 3});
}

TEST(PlaceholderScan, NeverLooksBackAfterReplacingAPlaceholder) {
    expectScan("%%v5v", "% 5v", {1});
    expectScan("%1%2vv", "%1  v", {2});
}

TEST(PlaceholderScan, PercentWithoutPlaceholderStays) {
    expectScan("100%", "100%", {});
    expectScan("%", "%", {});
    expectScan("50% of level", "50% of level", {});
    expectScan("% v", "% v", {});
    expectScan("%-3v", "%-3v", {});
    expectScan("%+3v", "%+3v", {});
    expectScan("%1.5v", "%1.5v", {});
    expectScan("%12", "%12", {});
    expectScan("%\xB2v", "%\xB2v", {});
}

TEST(PlaceholderScan, CapitalVIsNoPlaceholder) {
    expectScan("%V", "%V", {});
    expectScan("%3V", "%3V", {});
    expectScan("%Vv", "%Vv", {});
}

TEST(PlaceholderScan, VBehindARejectedPercentMayEndALaterPlaceholder) {
    expectScan("50% of %v", "50% of  ", {7});
    expectScan("%%v", "% ", {1});
    expectScan("%a%3vb", "%a   b", {2});
}

TEST(PlaceholderScan, WidthIsSixteenBit) {
    expectScan("%32767v!", std::string(32767, ' ') + "!", {0});
    expectScan("%32768v!", "%32768v!", {});
    expectScan("%65536v%v", "%65536v ", {7});
    expectScan("%65537v", "%65537v", {});
    expectScan("%4294967297v", "%4294967297v", {});
    expectScan("%18446744073709551617v", "%18446744073709551617v", {});
    expectScan("%0032767v", std::string(32767, ' '), {0});
}

TEST(PlaceholderScan, ColumnIsSixteenBit) {
    const std::string upToLast(32767, 'a');
    expectScan(upToLast + "%2v", upToLast + "  ", {32767});
    expectScan(upToLast + "a%2v", upToLast + "a%2v", {});
    expectScan("%32767v%v%v", std::string(32768, ' ') + "%v", {0, 32767});
    // A surplus placeholder has no column and goes wherever it stands.
    expectScan("%v%v%v%v" + upToLast + "%v", "    " + upToLast, {0, 1, 2, 3});
}

TEST(PlaceholderScan, ColumnsCountCharactersOfTheDeviceEncoding) {
    // "Füllstände in €: " in the device's single-byte encoding
    expectScan("F\xFCllst\xE4nde in \x80: %4v", "F\xFCllst\xE4nde in \x80:     ", {17});
}

TEST(PlaceholderScan, EveryByteSurvives) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    expectScan(all, all, {});
    expectScan(all + "%v", all + " ", {256});
}

TEST(PlaceholderScan, FourWidestFieldsFit) {
    const auto scan = scanPlaceholders("%32767v%v%32767v%32767v");
    // The third and fourth would start after the last column.
    EXPECT_EQ(columns(scan), (std::vector<int>{0, 32767}));
    EXPECT_EQ(scan.DisplayText.size(), 32768U + 14U);
}

/// Texts of some megabytes: a scan whose cost grows with the square of the length would need hours for one.
TEST(PlaceholderScan, HostileTextsAreScannedInOnePass) {
    constexpr std::size_t count = 4'000'000;
    const std::string percents(count, '%');
    expectScan(percents, percents, {});
    expectScan("v" + percents, "v" + percents, {});
    // Only the last "%" stands before the "v", and its column is beyond the last.
    expectScan(percents + "v", percents + "v", {});
    const std::string few(30'000, '%');
    expectScan(few + "v", few.substr(1) + " ", {29'999});

    const std::string digits = "%" + std::string(count, '7');
    expectScan(digits, digits, {});
    expectScan(digits + "v", digits + "v", {});
    const std::string cuts = repeated("%1234567890", count / 8);
    expectScan(cuts + "v", cuts + "v", {});
    const std::string letters = repeated("%a", count);
    expectScan(letters + "v", letters + "v", {});

    expectScan(repeated("%v", count), "    ", {0, 1, 2, 3});
    expectScan(repeated("%32767v", count / 4).insert(0, "%v%v%v%v"), "    ", {0, 1, 2, 3});
    expectScan("%v%v%v%v" + repeated("%%v5v", count / 4), "    " + repeated("%5v", count / 4), {0, 1, 2, 3});
}

TEST(PlaceholderScan, AgreesWithTheStepByStepScanOnRandomTexts) {
    std::mt19937 random(20'240'601);
    const std::vector<std::string> pieces{"%", "%", "v",  "v",   "V",       "0",       "1",    "9",
                                          "a", " ", "%v", "%2v", "%32767v", "%32768v", "\xE9", "%00v"};
    for (int round = 0; round < 5'000; ++round) {
        std::string text;
        for (auto left = random() % 14; left > 0; --left)
            text += pieces[random() % pieces.size()];
        ASSERT_EQ(scanPlaceholders(text), testing::referenceScan(text)) << text;
    }
}

} // namespace
} // namespace orvista
