#include "display/LiveField.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orvista {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

TEST(FloatField, IsRightAlignedWithItsDecimals) {
    EXPECT_EQ(floatFieldText(3.14159F, {7, 3}), "  3.142");
    EXPECT_EQ(floatFieldText(0.0F, {7, 3}), "  0.000");
    EXPECT_EQ(floatFieldText(-12.5F, {7, 3}), "-12.500");
    EXPECT_EQ(floatFieldText(42.0F, {4, 0}), "  42");
    EXPECT_EQ(floatFieldText(21.5F, {4, 1}), "21.5");
    EXPECT_EQ(floatFieldText(1e6F, {7, 0}), "1000000");
}

TEST(FloatField, RoundsByTheExactBinaryValue) {
    EXPECT_EQ(floatFieldText(0.125F, {5, 2}), " 0.12");
    EXPECT_EQ(floatFieldText(0.375F, {5, 2}), " 0.38");
    EXPECT_EQ(floatFieldText(2.5F, {3, 0}), "  2");
    EXPECT_EQ(floatFieldText(0.999F, {4, 1}), " 1.0");
}

TEST(FloatField, ShowsNoSignBeforeAZero) {
    EXPECT_EQ(floatFieldText(-0.0F, {4, 1}), " 0.0");
    EXPECT_EQ(floatFieldText(-0.04F, {4, 1}), " 0.0");
    EXPECT_EQ(floatFieldText(-0.06F, {4, 1}), "-0.1");
    EXPECT_EQ(floatFieldText(std::numeric_limits<float>::denorm_min(), {5, 3}), "0.000");
}

TEST(FloatField, ShowsStarsWhereTheValueDoesNotFit) {
    EXPECT_EQ(floatFieldText(1000.0F, {7, 3}), "*******");
    EXPECT_EQ(floatFieldText(999.9994F, {7, 3}), "999.999");
    EXPECT_EQ(floatFieldText(999.9996F, {7, 3}), "*******");
    EXPECT_EQ(floatFieldText(-10.0F, {2, 0}), "**");
    EXPECT_EQ(floatFieldText(10.0F, {1, 0}), "*");
    EXPECT_EQ(floatFieldText(std::numeric_limits<float>::max(), {40, 16}), std::string(40, '*'));
    EXPECT_EQ(floatFieldText(std::numeric_limits<float>::max(), {40, 0}),
              " 340282346638528859811704183484516925440");
}

TEST(FloatField, TellsWhatIsNoNumber) {
    EXPECT_EQ(floatFieldText(notANumber, {7, 3}), "-------");
    EXPECT_EQ(floatFieldText(-notANumber, {3, 0}), "---");
    EXPECT_EQ(floatFieldText(infinity, {7, 3}), "*******");
    EXPECT_EQ(floatFieldText(-infinity, {2, 3}), "**");
}

TEST(FloatField, BoundsFormatsBeyondSense) {
    EXPECT_EQ(floatFieldText(5.0F, {0, -1}), "5");
    EXPECT_EQ(floatFieldText(5.0F, {1000000, 0}), std::string(39, ' ') + "5");
    EXPECT_EQ(floatFieldText(0.5F, {40, 1000000}), std::string(22, ' ') + "0.5000000000000000");
}

TEST(FloatFormat, ReadsTheTextsOfTheVariable) {
    const auto format = [](const char* width, const char* precision) {
        return floatFormat({"RegVar1", "0.0", width, precision});
    };
    EXPECT_EQ(format("7", "3"), (FloatFormat{7, 3}));
    EXPECT_EQ(format(" 12", "0"), (FloatFormat{12, 0}));
    EXPECT_EQ(format("", ""), (FloatFormat{7, 0}));
    EXPECT_EQ(format("wide", "-2"), (FloatFormat{7, 0}));
    EXPECT_EQ(format("0", "2"), (FloatFormat{7, 2}));
    EXPECT_EQ(format("-5", "2"), (FloatFormat{7, 2}));
    EXPECT_EQ(format("41", "17"), (FloatFormat{40, 16}));
    EXPECT_EQ(format("1e300", "1e999"), (FloatFormat{40, 16}));
    EXPECT_EQ(format("4.6", "1.5"), (FloatFormat{5, 2}));
}

TEST(BooleanField, KeepsTheLengthOfTheLongerText) {
    EXPECT_EQ(booleanFieldText(true, {"ON", "OFF"}), "ON ");
    EXPECT_EQ(booleanFieldText(false, {"ON", "OFF"}), "OFF");
    EXPECT_EQ(booleanFieldText(false, {"running", ""}), "       ");
    EXPECT_EQ(booleanFieldText(true, {"", ""}), "");
}

TEST(ClockFields, ShowTimeAndDate) {
    const LocalTime time{2026, 3, 9, 7, 5, 59};
    EXPECT_EQ(timeFieldText(time), "07:05:59");
    EXPECT_EQ(dateFieldText(time), "09.03.2026");
    EXPECT_EQ(timeFieldText({1, 1, 1, 123, -4, 60}), "23:00:60");
    EXPECT_EQ(dateFieldText({12026, 12, 31, 0, 0, 0}), "31.12.2026");
}

TEST(DefaultValues, AreTheNumbersOfTheDefaultTexts) {
    Project project;
    project.RegVar[0].defaultValue = "21.5";
    project.RegVar[1].defaultValue = " -3 degrees";
    project.RegVar[2].defaultValue = "none";
    project.RegVar[3].defaultValue = "1e300";
    project.RegVar[4].defaultValue = "-1e999";
    project.RegVar[63].defaultValue = "7";
    project.CoilVar[0].defaultValue = "1";
    project.CoilVar[1].defaultValue = "-1";
    project.CoilVar[2].defaultValue = "ON";
    project.CoilVar[31].defaultValue = "2";
    const DisplayValues values = defaultValues(project);
    EXPECT_EQ(values.floats[0], 21.5F);
    EXPECT_EQ(values.floats[1], -3.0F);
    EXPECT_EQ(values.floats[2], 0.0F);
    EXPECT_EQ(values.floats[3], infinity);
    EXPECT_EQ(values.floats[4], -infinity);
    EXPECT_EQ(values.floats[5], 0.0F);
    EXPECT_EQ(values.floats[63], 7.0F);
    EXPECT_TRUE(values.booleans[0]);
    EXPECT_TRUE(values.booleans[1]);
    EXPECT_FALSE(values.booleans[2]);
    EXPECT_FALSE(values.booleans[3]);
    EXPECT_TRUE(values.booleans[31]);
}

} // namespace
} // namespace orvista
