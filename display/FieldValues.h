#pragma once

#include "display/DisplayValues.h"
#include "display/LiveField.h"

#include <map>
#include <optional>

/// With which values a message is tried before anything is sent.
namespace orvista {

/// Values for the fields of a message; the clock goes on unless it is among them.
struct FieldValues {
    DisplayValues values; ///< but for the clock
    /// Hour, minute and second that stand still.
    std::optional<LocalTime> time;
    /// Day, month and year that stand still.
    std::optional<LocalTime> date;
    bool operator==(const FieldValues&) const = default;

    /// What the fields show while the display's clock is at `now`.
    DisplayValues at(const LocalTime& now) const;
};

enum class ValueChoice {
    Defaults,
    Widest,   ///< floats and the clock at their widest, the longer text of each Boolean
    Smallest, ///< 0, and the shorter texts
    Stars,    ///< floats that do not fit; the rest at its widest
    On,       ///< all Booleans; floats are at their defaults
    Off
};
FieldValues chosenValues(ValueChoice choice, const Project& project);

/// Of all values that fit the one with the most characters: negative where there is room for the sign. 0
/// where none fits.
float widestFloat(FloatFormat format);

/// The time and date of which most dots of a row are lit.
LocalTime widestTime();

/// Values that somebody has set one by one, by the index of the variable; others are as they were.
struct OwnValues {
    std::map<std::size_t, float> floats;
    std::map<std::size_t, bool> booleans;
    std::optional<LocalTime> time; ///< as in FieldValues
    std::optional<LocalTime> date;
    bool operator==(const OwnValues&) const = default;
};
FieldValues withOwn(FieldValues values, const OwnValues& own);

} // namespace orvista
