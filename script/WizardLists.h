#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// The fixed lists of the message wizard. Each table holds what a list shows together with what its choice
/// writes into the script, in the order of the list, so that the two cannot drift apart.
namespace orvista::wizard {

/// A list entry and its part of a script line.
struct Item {
    std::string_view shown;
    std::string_view script;
};

/// Shown and written alike.
inline constexpr std::array<std::string_view, 4> colours{"RED", "GREEN", "ORANGE", "BLACK"};

struct Font {
    std::string_view shown;
    std::string_view commandSuffix; ///< "TEXT", "DISPVAR", "TIME" and "DATE" of the small font end in "S"
    std::string_view row;           ///< y of everything written in the font, in display pixels
    int cellWidth;                  ///< display pixels a character column takes
};
inline constexpr std::array<Font, 2> fonts{{{"5x7", "S", "5", 6}, {"8x15", "", "0", 8}}};

/// Written after "IN " or "OUT "; the speed follows directly. The GO- effects move by steps of 1.
/// "NONE" writes no line.
inline constexpr std::array<Item, 6> effects{{{"NONE", ""},
                                              {"GO-LEFT", "GO-LEFT 1 "},
                                              {"GO-RIGHT", "GO-RIGHT 1 "},
                                              {"GO-UP", "GO-UP 1 "},
                                              {"GO-DOWN", "GO-DOWN 1 "},
                                              {"FADE", "FADE "}}};

/// A larger number is slower.
inline constexpr std::array<Item, 3> speeds{{{"Low", "100"}, {"Medium", "50"}, {"High", "25"}}};

/// STILL is held for the chosen delay; BLINK takes two lines of fixed numbers.
struct SpecialEffect {
    std::string_view shown;
    std::string_view script;
    bool heldForDelay;
};
inline constexpr std::array<SpecialEffect, 2> specialEffects{
    {{"STILL", "ACT STILL ", true}, {"BLINK", "ACT BLINK 4 75\r\nACT STILL 500", false}}};

/// Hold times: shown in seconds, with the leading blank of a number's text, and written in milliseconds.
inline constexpr std::array<Item, 10> delays{{{" 1", "1000"},
                                              {" 2", "2000"},
                                              {" 3", "3000"},
                                              {" 4", "4000"},
                                              {" 5", "5000"},
                                              {" 6", "6000"},
                                              {" 7", "7000"},
                                              {" 8", "8000"},
                                              {" 9", "9000"},
                                              {" 10", "10000"}}};

/// What a field can show: the 32 Boolean and 64 float variables, then these two, shown and written alike.
inline constexpr std::array<std::string_view, 2> clockFields{"DATE", "TIME"};
inline constexpr std::size_t fieldSourceCount = 98;
const std::array<std::string, fieldSourceCount>& fieldSources();
bool isClockField(std::string_view fieldSource);

} // namespace orvista::wizard
