#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

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
/// The moment of such a text, from 1970 to 2261; nothing for any other, or one of a day that the calendar
/// does not have.
std::optional<UtcMoment> utcMoment(std::string_view text);

} // namespace orvista
