#include "model/UtcTime.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

using namespace std::chrono;

UtcMoment moment(year_month_day date, seconds time) {
    return sys_days(date) + time;
}

TEST(UtcTime, FolderNamesSortAsTheMomentsDo) {
    EXPECT_EQ(utcFolderName(moment(2026y / November / 22d, 3h + 15min)), "2026-11-22T031500Z");
    EXPECT_EQ(utcFolderName(moment(2028y / February / 29d, 23h + 59min + 59s)), "2028-02-29T235959Z");
    EXPECT_EQ(utcFolderName(moment(2027y / January / 1d, 0s)), "2027-01-01T000000Z");
}

TEST(UtcTime, TextsAreIso8601) {
    EXPECT_EQ(utcText(moment(2026y / November / 22d, 3h + 15min + 7s)), "2026-11-22T03:15:07Z");
}

TEST(UtcTime, WhatIsBelowASecondIsLeftOut) {
    EXPECT_EQ(utcFolderName(moment(2026y / July / 4d, 9h) + 999ms), "2026-07-04T090000Z");
}

TEST(UtcTime, TextsAreReadAgain) {
    for (const char* const text :
         {"2026-11-22T03:15:07Z", "2028-02-29T23:59:59Z", "1970-01-01T00:00:00Z", "2261-12-31T23:59:59Z"}) {
        const auto read = utcMoment(text);
        ASSERT_TRUE(read) << text;
        EXPECT_EQ(utcText(*read), text);
    }
}

TEST(UtcTime, OtherTextsAreNoMoments) {
    for (const char* const text :
         {"", "2026-11-22T03:15:07", "2026-11-22 03:15:07Z", "2026-02-29T00:00:00Z", "2026-13-01T00:00:00Z",
          "2026-11-22T24:00:00Z", "2026-11-22T03:60:00Z", "2026-11-22T03:15:61Z", "2026-11-2aT03:15:07Z",
          "2026-11-22T03:15:07Zx", " 026-11-22T03:15:07Z", "2026-00-10T00:00:00Z", "1969-12-31T23:59:59Z",
          "2262-01-01T00:00:00Z", "7916-11-22T03:15:07Z"})
        EXPECT_FALSE(utcMoment(text)) << text;
}

} // namespace
} // namespace orvista
