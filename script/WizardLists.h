#pragma once

#include "script/Styles.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// The lists of the message wizard that are more than a table of script/Styles.h. Each holds what a list
/// shows together with what its choice means, in the order of the list, so that the two cannot drift apart.
namespace orvista::wizard {

/// A list entry and its part of a script line.
struct NumberChoice {
    std::string_view shown;
    std::string_view script;
};

/// "NONE", which writes no line, and the effects.
struct EffectChoice {
    std::string_view shown;
    const EffectStyle* style; ///< null for none
};
inline constexpr auto effects = [] {
    std::array<EffectChoice, 1 + effectStyles.size()> choices{{{"NONE", nullptr}}};
    std::ranges::transform(effectStyles, choices.begin() + 1, [](const EffectStyle& style) {
        return EffectChoice{style.shown, &style};
    });
    return choices;
}();

/// A larger number is slower.
inline constexpr std::array<NumberChoice, 3> speeds{{{"Low", "100"}, {"Medium", "50"}, {"High", "25"}}};

/// Hold times: shown in seconds, with the leading blank of a number's text, and written in milliseconds.
inline constexpr std::array<NumberChoice, 10> delays{{{" 1", "1000"},
                                                      {" 2", "2000"},
                                                      {" 3", "3000"},
                                                      {" 4", "4000"},
                                                      {" 5", "5000"},
                                                      {" 6", "6000"},
                                                      {" 7", "7000"},
                                                      {" 8", "8000"},
                                                      {" 9", "9000"},
                                                      {" 10", "10000"}}};

/// What a field can show: the 32 Boolean and 64 float variables, then date and time. Shown and written alike.
struct FieldSource {
    std::string shown;
    LiveValue value = LiveValue::Boolean;
    std::size_t index = 0; ///< of the variable, from 0
};
inline constexpr std::size_t fieldSourceCount = 98;
const std::array<FieldSource, fieldSourceCount>& fieldSources();
/// Where it stands among them.
/// \param index of the variable, from 0; 0 for date and time
std::size_t fieldSourcePosition(LiveValue value, std::size_t index);

} // namespace orvista::wizard
