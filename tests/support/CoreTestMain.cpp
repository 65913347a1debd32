#include "tests/support/ExpectedLocale.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <locale>
#include <stdexcept>
#ifndef _WIN32
#include <sys/stat.h>
#endif

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

/// Tests make files for child processes that have given up their rights, whatever the user's own mask.
void letOthersRead() {
#ifndef _WIN32
    ::umask(S_IWGRP | S_IWOTH);
#endif
}

} // namespace

int main(int argc, char** argv) {
    letOthersRead();
    enterLocale();
    if (!orvista::testing::isExpectedLocaleInForce()) {
        std::fputs("the locale this run is for is not in force\n", stderr);
        return EXIT_FAILURE;
    }
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
