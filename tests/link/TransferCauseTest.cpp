#include "link/TransferCause.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace orvista {
namespace {

TEST(TransferCause, RepliesAreShownWithoutControlCharacters) {
    EXPECT_EQ(replyCause("452 disk full"), "452 disk full");
    EXPECT_EQ(replyCause("550 \x1b[2Jno\tfile\x7f"), "550 ?[2Jno?file?");
    EXPECT_EQ(replyCause("550 \xC2\x9B"
                         "2J"),
              "550 ?2J");
    EXPECT_EQ(replyCause(""), "");
}

TEST(TransferCause, RepliesAreUtf8OrWindows1252) {
    EXPECT_EQ(replyCause("550 gesch\xC3\xBCtzt"), "550 gesch\xC3\xBCtzt");
    EXPECT_EQ(replyCause("550 gesch\xFCtzt"), "550 gesch\xC3\xBCtzt");
}

TEST(TransferCause, RepliesAreCutAt80Characters) {
    EXPECT_EQ(replyCause("550 " + std::string(100, 'x')), "550 " + std::string(76, 'x'));
    std::string accents;
    std::string eighty;
    for (int i = 0; i < 100; ++i) {
        accents += "\xC3\xA9";
        if (i < 80)
            eighty += "\xC3\xA9";
    }
    EXPECT_EQ(replyCause(accents), eighty);
}

TEST(TransferCause, ConnectionsFailInWords) {
    EXPECT_EQ(silenceCause(std::chrono::seconds(10)), "no answer within 10 s");
#ifndef _WIN32
    EXPECT_EQ(connectionCause(ECONNREFUSED), "connection refused");
    EXPECT_EQ(connectionCause(EHOSTUNREACH), "no connection: No route to host");
#endif
    EXPECT_EQ(connectionCause(0), "no connection");
}

TEST(TransferCause, WithoutACauseTheTextStandsAlone) {
    EXPECT_EQ(withCause("a.bmp was not taken", ""), "a.bmp was not taken");
    EXPECT_EQ(withCause("a.bmp was not taken", "hung up"), "a.bmp was not taken: hung up");
}

} // namespace
} // namespace orvista
