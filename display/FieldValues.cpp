#include "display/FieldValues.h"

#include "display/FieldFormats.h"
#include "display/LedFont.h"
#include "model/Numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace orvista {

namespace {

/// In how many columns of its cell a digit lights a dot, in both fonts together.
int litColumns(char digit) {
    int count = 0;
    for (const LedFont font : {LedFont::Small5x7, LedFont::Large8x15}) {
        unsigned columns = 0;
        for (const std::uint8_t row : glyph(font, static_cast<unsigned char>(digit)).rows)
            columns |= row;
        for (; columns != 0; columns >>= 1)
            count += static_cast<int>(columns & 1U);
    }
    return count;
}

/// The first of the numbers whose two digits are widest.
int widestNumber(int first, int last) {
    const auto width = [](int number) {
        return litColumns(static_cast<char>('0' + number / 10 % 10)) +
               litColumns(static_cast<char>('0' + number % 10));
    };
    int widest = first;
    for (int number = first; number <= last; ++number)
        if (width(number) > width(widest))
            widest = number;
    return widest;
}

/// As many nines as there is room for; nothing where there is none for a digit before the point.
std::string nines(FloatFormat format, std::string_view sign) {
    const int decimals = format.precision > 0 ? format.precision + 1 : 0;
    const int digits = format.width - decimals - static_cast<int>(sign.size());
    if (digits < 1)
        return {};
    std::string text = std::string(sign) + std::string(static_cast<std::size_t>(digits), '9');
    if (format.precision > 0)
        text += '.' + std::string(static_cast<std::size_t>(format.precision), '9');
    return text;
}

float nearestFinite(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -largest, largest));
}

bool isLonger(const std::string& one, const std::string& other) {
    return one.size() > other.size();
}

} // namespace

DisplayValues FieldValues::at(const LocalTime& now) const {
    DisplayValues shown = values;
    shown.clock = now;
    if (date) {
        shown.clock.year = date->year;
        shown.clock.month = date->month;
        shown.clock.day = date->day;
    }
    if (time) {
        shown.clock.hour = time->hour;
        shown.clock.minute = time->minute;
        shown.clock.second = time->second;
    }
    return shown;
}

float widestFloat(FloatFormat format) {
    for (const std::string_view sign : {"-", ""}) {
        const std::string text = nines(format, sign);
        if (text.empty())
            continue;
        // The nearest single may be rounded to a digit more.
        float value = nearestFinite(leadingNumber(text));
        while (floatFieldText(value, format).starts_with('*'))
            value = std::nextafter(value, 0.0F);
        return value;
    }
    return 0.0F;
}

LocalTime widestTime() {
    static const LocalTime widest{2000 + widestNumber(0, 99), widestNumber(1, 12), widestNumber(1, 28),
                                  widestNumber(0, 23),        widestNumber(0, 59), widestNumber(0, 59)};
    return widest;
}

FieldValues chosenValues(ValueChoice choice, const Project& project) {
    FieldValues chosen{defaultValues(project), std::nullopt, std::nullopt};
    if (choice == ValueChoice::Defaults)
        return chosen;
    const FieldFormats formats = fieldFormats(project);
    for (std::size_t i = 0; i < formats.booleans.size(); ++i) {
        const auto& [on, off] = formats.booleans[i];
        chosen.values.booleans[i] =
            choice == ValueChoice::On ||
            (choice == ValueChoice::Smallest ? isLonger(off, on)
                                             : choice != ValueChoice::Off && !isLonger(off, on));
    }
    if (choice == ValueChoice::Smallest)
        chosen.values.floats.fill(0.0F);
    if (choice == ValueChoice::Stars)
        chosen.values.floats.fill(std::numeric_limits<float>::infinity());
    if (choice == ValueChoice::Widest)
        std::ranges::transform(formats.floats, chosen.values.floats.begin(), widestFloat);
    if (choice == ValueChoice::Widest || choice == ValueChoice::Stars)
        chosen.time = chosen.date = widestTime();
    return chosen;
}

FieldValues withOwn(FieldValues values, const OwnValues& own) {
    for (const auto& [index, value] : own.floats)
        values.values.floats.at(index) = value;
    for (const auto& [index, value] : own.booleans)
        values.values.booleans.set(index, value);
    if (own.time)
        values.time = own.time;
    if (own.date)
        values.date = own.date;
    return values;
}

} // namespace orvista
