#include "tests/support/ExpectedLocale.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <locale>
#include <stdexcept>

namespace {

/// Puts the user's locale in force, as a program with windows does; a locale that the machine lacks leaves
/// the plain one.
void enterLocale() {
    try {
        std::locale::global(std::locale(""));
    } catch (const std::runtime_error&) {
        std::locale::global(std::locale::classic());
    }
}

} // namespace

int main(int argc, char** argv) {
    enterLocale();
    if (!orvista::testing::isExpectedLocaleInForce()) {
        std::fputs("the locale this run is for is not in force\n", stderr);
        return EXIT_FAILURE;
    }
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
