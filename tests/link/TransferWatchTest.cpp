#include "link/ftp/TransferWatch.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr TransferWatch::Time start{};

TEST(TransferWatch, SilenceEndsATransfer) {
    TransferWatch watch(start, seconds(10));
    EXPECT_FALSE(watch.isOver(start + milliseconds(9'999), 0));
    EXPECT_TRUE(watch.isOver(start + seconds(10), 0));
}

TEST(TransferWatch, AnswersAndBytesBreakTheSilence) {
    TransferWatch watch(start, seconds(10));
    watch.noteAnswer(start + seconds(4));
    EXPECT_FALSE(watch.isOver(start + seconds(13), 0));
    EXPECT_FALSE(watch.isOver(start + milliseconds(13'999), 2000));
    EXPECT_FALSE(watch.isOver(start + seconds(23), 2000));
    EXPECT_TRUE(watch.isOver(start + seconds(24), 2000));
}

TEST(TransferWatch, ADripEndsATransferAfterThirtySeconds) {
    TransferWatch watch(start, seconds(10));
    for (int second = 1; second < 30; ++second)
        EXPECT_FALSE(watch.isOver(start + seconds(second), second)) << second;
    EXPECT_TRUE(watch.isOver(start + seconds(30), 30));
}

TEST(TransferWatch, AKilobyteInThirtySecondsIsEnough) {
    TransferWatch enough(start, seconds(100));
    EXPECT_FALSE(enough.isOver(start + seconds(30), 1024));
    TransferWatch tooLittle(start, seconds(100));
    EXPECT_TRUE(tooLittle.isOver(start + seconds(30), 1023));
}

TEST(TransferWatch, OnlyTheLastThirtySecondsCount) {
    TransferWatch watch(start, seconds(10));
    constexpr std::int64_t megabyte = 1 << 20;
    for (int second = 1; second <= 20; ++second)
        EXPECT_FALSE(watch.isOver(start + seconds(second), second * megabyte));
    for (int second = 21; second < 50; ++second)
        EXPECT_FALSE(watch.isOver(start + seconds(second), 20 * megabyte + second)) << second;
    EXPECT_TRUE(watch.isOver(start + seconds(50), 20 * megabyte + 50));
}

TEST(TransferWatch, ASteadyTransferGoesOnForAsLongAsItTakes) {
    TransferWatch watch(start, seconds(10));
    for (int step = 1; step <= 100'000; ++step)
        ASSERT_FALSE(watch.isOver(start + milliseconds(100) * step, step * 4)) << step;
}

} // namespace
} // namespace orvista
