#pragma once

#include <clocale>
#include <cstdlib>
#include <string_view>

namespace orvista::testing {

/// False when the run was to be in a locale with a decimal comma and is not: its tests would then prove
/// nothing. Call it once the program has put the user's locale in force.
inline bool isExpectedLocaleInForce() {
    const char* const expected = std::getenv("ORVISTA_EXPECTED_LOCALE");
    return !expected || (std::string_view(std::setlocale(LC_NUMERIC, nullptr)) == expected &&
                         std::string_view(std::localeconv()->decimal_point) == ",");
}

} // namespace orvista::testing
