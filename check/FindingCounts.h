#pragma once

#include "check/Severity.h"

#include <cstddef>
#include <string>

namespace orvista {

/// How much was found.
struct FindingCounts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;

    std::size_t total() const { return errors + warnings + notes; }
    void add(Severity severity, std::size_t number);
    FindingCounts& operator+=(const FindingCounts& others);
    /// \param others that were counted among these
    FindingCounts& operator-=(const FindingCounts& others);
    bool operator==(const FindingCounts&) const = default;
};

/// "1 error, 2 warnings"; empty for none.
std::string countsText(const FindingCounts& counts);

} // namespace orvista
