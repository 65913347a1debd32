#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The styles of the message language: a row each with the word for it in scripts, in the wizard's lists, in
/// sheets and in sentences. The rows stand in the order of the wizard's lists.
namespace orvista {

/// One dot of the panel: a red and a green diode behind the same lens; both together look orange. The values
/// are the diodes as bits.
enum class Led : std::uint8_t { Off = 0, Red = 1, Green = 2, Orange = 3 };

struct ColourStyle {
    Led led;
    std::string_view shown;
};
inline constexpr std::array<ColourStyle, 4> colourStyles{
    {{Led::Red, "RED"}, {Led::Green, "GREEN"}, {Led::Orange, "ORANGE"}, {Led::Off, "BLACK"}}};

/// The device's two fonts, one cell per character: no kerning, no proportional widths.
enum class LedFont : std::uint8_t { Small5x7, Large8x15 };

struct FontStyle {
    LedFont font;
    std::string_view shown;
    std::string_view commandSuffix; ///< "TEXT", "DISPVAR", "TIME" and "DATE" of the small font end in "S"
    int row;                        ///< y of everything that the wizard writes in the font, in dots
    int cellWidth;                  ///< in dots, the gap to the next character included
    int cellHeight;
};
inline constexpr std::array<FontStyle, 2> fontStyles{
    {{LedFont::Small5x7, "5x7", "S", 5, 6, 7}, {LedFont::Large8x15, "8x15", "", 0, 8, 15}}};

constexpr const FontStyle& styleOf(LedFont font) {
    return fontStyles[static_cast<std::size_t>(font)];
}

/// How a page enters or leaves.
enum class Effect : std::uint8_t { Left, Right, Up, Down, Fade };

struct EffectStyle {
    Effect effect;
    std::string_view shown;
};
inline constexpr std::array<EffectStyle, 5> effectStyles{{{Effect::Left, "GO-LEFT"},
                                                          {Effect::Right, "GO-RIGHT"},
                                                          {Effect::Up, "GO-UP"},
                                                          {Effect::Down, "GO-DOWN"},
                                                          {Effect::Fade, "FADE"}}};

constexpr const EffectStyle& styleOf(Effect effect) {
    return effectStyles[static_cast<std::size_t>(effect)];
}

/// What a page does for a stretch of time. It enters and leaves with an effect.
enum class StepKind : std::uint8_t { Enter, Still, Blink, Leave };

struct ActStyle {
    StepKind act;
    std::string_view shown;
};
inline constexpr std::array<ActStyle, 2> actStyles{{{StepKind::Still, "STILL"}, {StepKind::Blink, "BLINK"}}};

/// What a live field shows.
enum class LiveValue : std::uint8_t { Float, Boolean, Time, Date };

struct ClockStyle {
    LiveValue value;
    std::string_view shown; ///< also the command that draws it
};
inline constexpr std::array<ClockStyle, 2> clockStyles{
    {{LiveValue::Date, "DATE"}, {LiveValue::Time, "TIME"}}};

constexpr bool isClock(LiveValue value) {
    return value == LiveValue::Time || value == LiveValue::Date;
}

/// The words of a table as a sentence offers them: "RED, GREEN, ORANGE or BLACK".
std::string choiceOf(const auto& styles) {
    std::string words;
    for (std::size_t i = 0; i < styles.size(); ++i)
        words.append(i == 0 ? "" : i + 1 == styles.size() ? " or " : ", ").append(styles[i].shown);
    return words;
}

} // namespace orvista
