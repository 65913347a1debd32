#include <gmock/gmock.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <stdexcept>
#include <string_view>

namespace {

/// Puts the user's locale in force, as a program with windows does. False when the run was to be in a locale
/// with a decimal comma and is not: its tests would then prove nothing.
bool enterLocale() {
    const char* const expected = std::getenv("ORVISTA_EXPECTED_LOCALE");
    try {
        std::locale::global(std::locale(""));
    } catch (const std::runtime_error&) {
        return expected == nullptr;
    }
    return !expected || (std::string_view(std::setlocale(LC_NUMERIC, nullptr)) == expected &&
                         std::string_view(std::localeconv()->decimal_point) == ",");
}

} // namespace

int main(int argc, char** argv) {
    if (!enterLocale()) {
        std::fputs("the locale this run is for is not in force\n", stderr);
        return EXIT_FAILURE;
    }
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
