#include "link/ftp/CurlLibrary.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

/// On Windows it must lie beside the program that opens it; without it every transfer fails to connect.
TEST(CurlLibrary, IsThereWheneverATransferNeedsIt) {
    for (int transfer = 1; transfer <= 2; ++transfer)
        EXPECT_TRUE(CurlLibrary::open()) << "transfer " << transfer;
}

} // namespace
} // namespace orvista
