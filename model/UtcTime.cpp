#include "model/UtcTime.h"

#include "model/Numbers.h"

#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace orvista {

namespace {

std::string twoDigits(unsigned number) {
    std::string digits = decimalText(number);
    return digits.insert(0, digits.size() < 2 ? 1 : 0, '0');
}

std::string dateText(std::chrono::sys_days day) {
    const std::chrono::year_month_day date(day);
    return decimalText(static_cast<int>(date.year())) + "-" + twoDigits(static_cast<unsigned>(date.month())) +
           "-" + twoDigits(static_cast<unsigned>(date.day()));
}

/// \param between hours, minutes and seconds
std::string momentText(UtcMoment moment, std::string_view between) {
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::hh_mm_ss time(std::chrono::floor<std::chrono::seconds>(moment - day));
    return dateText(day)
        .append("T")
        .append(twoDigits(static_cast<unsigned>(time.hours().count())))
        .append(between)
        .append(twoDigits(static_cast<unsigned>(time.minutes().count())))
        .append(between)
        .append(twoDigits(static_cast<unsigned>(time.seconds().count())))
        .append("Z");
}

} // namespace

UtcMoment presentMoment() {
    constexpr std::size_t latest = 0xFFFFFFFF; // in 2106
    const char* const given = std::getenv("SOURCE_DATE_EPOCH");
    const auto seconds = wholeNumber(given != nullptr ? given : "", 0, latest);
    return seconds ? UtcMoment(std::chrono::seconds(*seconds)) : std::chrono::system_clock::now();
}

std::string utcFolderName(UtcMoment moment) {
    return momentText(moment, {});
}

std::string utcText(UtcMoment moment) {
    return momentText(moment, ":");
}

} // namespace orvista
