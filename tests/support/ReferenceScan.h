#pragma once

#include "script/PlaceholderScan.h"

#include <algorithm>
#include <string>

namespace orvista::testing {

/// Blanks that the characters between "%" and the next "v" ask for; 0 when they ask for none.
inline int referenceWidth(const std::string& between) {
    if (between.find_first_not_of("0123456789") != std::string::npos)
        return 0;
    const std::string digits = between.substr(std::min(between.find_first_not_of('0'), between.size()));
    if (digits.empty())
        return 1;
    if (digits.size() > 5 || std::stoi(digits) > 32767)
        return 0;
    return std::stoi(digits);
}

/// The scan step by step on one text that changes as it goes: slow and plain, to compare with.
inline PlaceholderScan referenceScan(std::string text) {
    PlaceholderScan scan;
    std::size_t fields = 0;
    std::size_t p = text.find('%');
    while (p != std::string::npos) {
        const std::size_t q = text.find('v', p + 1);
        const int width = q == std::string::npos ? 0 : referenceWidth(text.substr(p + 1, q - p - 1));
        if (width == 0 || (fields < 4 && p > 32767)) {
            p = text.find('%', p + 1);
        } else if (fields == 4) {
            ++scan.surplus;
            text.erase(p, q - p + 1);
            p = text.find('%', p);
        } else {
            text.replace(p, q - p + 1, static_cast<std::size_t>(width), ' ');
            scan.places[fields] = width;
            scan.VarPos[fields++] = static_cast<std::int16_t>(p);
            p = text.find('%', p + static_cast<std::size_t>(width));
        }
    }
    scan.DisplayText = text;
    return scan;
}

} // namespace orvista::testing
