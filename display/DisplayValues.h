#pragma once

#include "model/Project.h"

#include <array>
#include <bitset>

namespace orvista {

/// The display's own date and time.
struct LocalTime {
    int year = 2000;
    int month = 1; ///< 1 to 12
    int day = 1;   ///< 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool operator==(const LocalTime&) const = default;
};

/// Everything a live field can show.
struct DisplayValues {
    std::array<float, floatVariableCount> floats{};
    std::bitset<booleanVariableCount> booleans;
    LocalTime clock;
    bool operator==(const DisplayValues&) const = default;
};

/// What a variable holds before anything is written to it: the number its default text begins with, 0 where
/// there is none, infinity beyond a float's range; a Boolean is on unless its number is 0.
float defaultFloat(const FloatVariable& variable);
bool defaultBoolean(const BooleanVariable& variable);
DisplayValues defaultValues(const Project& project);

} // namespace orvista
