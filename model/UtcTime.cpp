#include "model/UtcTime.h"

#include "model/Numbers.h"

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

} // namespace

std::string utcFolderName(UtcMoment moment) {
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::hh_mm_ss time(std::chrono::floor<std::chrono::seconds>(moment - day));
    return dateText(day) + "T" + twoDigits(static_cast<unsigned>(time.hours().count())) +
           twoDigits(static_cast<unsigned>(time.minutes().count())) +
           twoDigits(static_cast<unsigned>(time.seconds().count())) + "Z";
}

} // namespace orvista
