#include "model/UtcTime.h"

#include "model/Numbers.h"
#include "model/Text.h"

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

/// The digits of a text such as "2026-11-22T03:15:00Z" from `place` on; nothing where other characters are
/// there, or the number is above `highest`.
std::optional<unsigned> numberAt(std::string_view text, std::size_t place, std::size_t digits,
                                 std::size_t highest) {
    const std::string_view number = text.substr(place, digits);
    if (!GenenalModule::IsAllDigits(number))
        return std::nullopt;
    const auto value = wholeNumber(number, 0, highest);
    return value ? std::optional(static_cast<unsigned>(*value)) : std::nullopt;
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

std::optional<UtcMoment> utcMoment(std::string_view text) {
    constexpr std::string_view form = "0000-00-00T00:00:00Z";
    if (text.size() != form.size())
        return std::nullopt;
    constexpr std::size_t lastWholeYear = 2261; // the clock counts nanoseconds from 1970 in 64 bits
    const auto year = numberAt(text, 0, 4, lastWholeYear);
    const auto month = numberAt(text, 5, 2, 12);
    const auto day = numberAt(text, 8, 2, 31);
    const auto hour = numberAt(text, 11, 2, 23);
    const auto minute = numberAt(text, 14, 2, 59);
    const auto second = numberAt(text, 17, 2, 59);
    if (!year || *year < 1970 || !month || !day || !hour || !minute || !second)
        return std::nullopt;
    const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(*year)),
                                           std::chrono::month(*month), std::chrono::day(*day));
    if (!date.ok())
        return std::nullopt;
    const UtcMoment moment = std::chrono::sys_days(date) + std::chrono::hours(*hour) +
                             std::chrono::minutes(*minute) + std::chrono::seconds(*second);
    return utcText(moment) == text ? std::optional(moment) : std::nullopt;
}

} // namespace orvista
