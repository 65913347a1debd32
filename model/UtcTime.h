#pragma once

#include <chrono>
#include <string>

/// Moments as they are written down, the same everywhere: UTC, to the second, whatever the time zone.
namespace orvista {

using UtcMoment = std::chrono::system_clock::time_point;

/// Now, or the moment that a build whose results are to be the same every time gives in SOURCE_DATE_EPOCH:
/// seconds since 1970.
UtcMoment presentMoment();

/// "2026-11-22T031500Z", which can be a folder's name on every platform.
std::string utcFolderName(UtcMoment moment);

/// "2026-11-22T03:15:00Z"
std::string utcText(UtcMoment moment);

} // namespace orvista
