#include "model/Numbers.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <limits>
#include <string>

namespace orvista {
namespace {

TEST(LeadingNumber, ReadsTheLongestLeadingDecimal) {
    EXPECT_EQ(leadingNumber("12abc"), 12.0);
    EXPECT_EQ(leadingNumber("abc"), 0.0);
    EXPECT_EQ(leadingNumber(""), 0.0);
    EXPECT_EQ(leadingNumber("  1.50"), 1.5);
    EXPECT_EQ(leadingNumber("-3"), -3.0);
    EXPECT_EQ(leadingNumber("+3"), 3.0);
    EXPECT_EQ(leadingNumber("1e3"), 1000.0);
    EXPECT_EQ(leadingNumber("1E-2x"), 0.01);
    EXPECT_EQ(leadingNumber(".5."), 0.5);
    EXPECT_EQ(leadingNumber("1e"), 1.0);
    EXPECT_EQ(leadingNumber("1.2.3"), 1.2);
}

TEST(LeadingNumber, KnowsNoOtherSpellings) {
    for (const char* text : {"inf", "nan", "-inf", "+-3", "--3", ".", "-", "e5", "\t7",
                             "\xA0"
                             "7"})
        EXPECT_EQ(leadingNumber(text), 0.0) << text;
    EXPECT_EQ(leadingNumber("0x10"), 0.0);
}

TEST(LeadingNumber, SkipsInnerBlanksOnlyWhereAsked) {
    EXPECT_EQ(leadingNumber("1 2 3"), 1.0);
    EXPECT_EQ(leadingNumber("1 2 3", InnerBlanks::Skipped), 123.0);
    EXPECT_EQ(leadingNumber("- 4", InnerBlanks::Skipped), -4.0);
}

TEST(LeadingNumber, TellsTooLargeFromTooSmall) {
    EXPECT_THROW(leadingNumber("1e309"), Overflow);
    EXPECT_THROW(leadingNumber("-1e99999999999999999999"), Overflow);
    EXPECT_THROW(leadingNumber(std::string(400, '9')), Overflow);
    EXPECT_EQ(leadingNumber("1e-99999999999999999999"), 0.0);
    EXPECT_EQ(leadingNumber("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(leadingNumber("0e99999999999999999999"), 0.0);
    EXPECT_EQ(leadingNumber("0." + std::string(400, '0') + "1e402"), 10.0);
    EXPECT_THROW(leadingNumber("1E9223372036854775807"), Overflow) << "the exponent itself just fits";
    EXPECT_THROW(leadingNumber("10E+9223372036854775806"), Overflow);
    EXPECT_EQ(leadingNumber("1E-9223372036854775807"), 0.0);
    EXPECT_EQ(leadingNumber("0.01E-9223372036854775807"), 0.0);
}

TEST(Rounding, HalvesGoToTheEvenNeighbour) {
    EXPECT_EQ(toWhole<int>(0.5), 0);
    EXPECT_EQ(toWhole<int>(1.5), 2);
    EXPECT_EQ(toWhole<int>(2.5), 2);
    EXPECT_EQ(toWhole<int>(-0.5), 0);
    EXPECT_EQ(toWhole<int>(-1.5), -2);
    EXPECT_EQ(toWhole<int>(2.51), 3);
}

TEST(Rounding, OverflowsExactlyAtTheBounds) {
    EXPECT_EQ(toWhole<std::int16_t>(32767.5 - 1e-6), 32767);
    EXPECT_THROW(toWhole<std::int16_t>(32767.5), Overflow);
    EXPECT_EQ(toWhole<std::int16_t>(-32768.5), -32768);
    EXPECT_THROW(toWhole<std::int16_t>(-32768.6), Overflow);
    EXPECT_EQ(toWhole<std::int32_t>(2147483647.0), 2147483647);
    EXPECT_THROW(toWhole<std::int32_t>(2147483648.0), Overflow);
    EXPECT_THROW(toWhole<std::int64_t>(9223372036854775808.0), Overflow);
    EXPECT_THROW(toWhole<std::uint16_t>(-1.0), Overflow);
    EXPECT_STREQ(Overflow().what(), "Overflow");
}

TEST(ShortestDecimal, NeverUsesAnExponent) {
    EXPECT_EQ(shortestDecimalText(100000), "100000");
    EXPECT_EQ(shortestDecimalText(0.5), "0.5");
    EXPECT_EQ(shortestDecimalText(0.0000001), "0.0000001");
    EXPECT_EQ(shortestDecimalText(-3), "-3");
    EXPECT_EQ(shortestDecimalText(0.1), "0.1");
    EXPECT_EQ(shortestDecimalText(-0.0), "0");
    EXPECT_EQ(shortestDecimalText(1e22), "1" + std::string(22, '0'));
    EXPECT_EQ(shortestDecimalText(1e23), "1" + std::string(23, '0'));
    EXPECT_EQ(shortestDecimalText(-1.25e17), "-125000000000000000");
    EXPECT_EQ(shortestDecimalText(1e16), "10000000000000000");
    EXPECT_EQ(shortestDecimalText(9007199254740993.0), "9007199254740992");
    EXPECT_EQ(shortestDecimalText(18014398509481988.0), "18014398509481988");
    EXPECT_EQ(shortestDecimalText(1.7976931348623157e308), "17976931348623157" + std::string(292, '0'));
    EXPECT_EQ(leadingNumber(shortestDecimalText(5e-324)), 5e-324);
    EXPECT_EQ(leadingNumber(shortestDecimalText(-1.7976931348623157e308)), -1.7976931348623157e308);
}

TEST(CountedText, OneThingHasNoEndingS) {
    EXPECT_EQ(countedText(0, "row"), "0 rows");
    EXPECT_EQ(countedText(1, "row"), "1 row");
    EXPECT_EQ(countedText(18446744073709551615U, "byte"), "18446744073709551615 bytes");
}

TEST(HexWord, HasFourCapitalDigits) {
    EXPECT_EQ(hexWord(0), "0000");
    EXPECT_EQ(hexWord(0x0FA0), "0FA0");
    EXPECT_EQ(hexWord(0xFFFF), "FFFF");
}

TEST(FloatText, HasTheShortestDigitsThatReadBack) {
    EXPECT_EQ(floatText(1.1F), "1.1");
    EXPECT_EQ(floatText(-0.0F), "-0");
    EXPECT_EQ(floatText(1e30F), "1e+30");
    EXPECT_EQ(floatText(std::numeric_limits<float>::infinity()), "inf");
    EXPECT_EQ(floatText(-std::numeric_limits<float>::infinity()), "-inf");
    EXPECT_EQ(floatText(std::numeric_limits<float>::quiet_NaN()), "nan");
}

} // namespace
} // namespace orvista
