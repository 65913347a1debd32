#pragma once

#include "script/Styles.h"

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

/// What a message script says, as values.
namespace orvista {

/// Where on the panel something is drawn, in dots from the top left, and in which colours. Text fills the
/// whole of its cells with the background colour.
struct Placement {
    int x = 0;
    int y = 0;
    Led foreground = Led::Off;
    Led background = Led::Off;
    bool operator==(const Placement&) const = default;
};

/// Some bytes of a line; columns count from 1.
struct ScriptSpan {
    std::size_t column = 0;
    std::size_t length = 0;
    bool operator==(const ScriptSpan&) const = default;
};

/// Where in the script an element stands. Lines count from 1.
struct ScriptSource {
    std::size_t line = 0;
    ScriptSpan command; ///< its word
    ScriptSpan background;
    ScriptSpan content; ///< the text between its quotes, the file name or the variable; the command for time
                        ///< and date
    bool operator==(const ScriptSource&) const = default;
};

struct TextElement {
    Placement placement;
    LedFont font = LedFont::Large8x15;
    std::string text; ///< Windows-1252
    ScriptSource source;
};

struct ImageElement {
    Placement placement;
    std::string name; ///< of the bitmap, as written: Windows-1252
    ScriptSource source;
};

struct FieldElement {
    Placement placement;
    LedFont font = LedFont::Large8x15;
    LiveValue value = LiveValue::Float;
    std::size_t index = 0; ///< of the variable, from 0
    ScriptSource source;
};

using ScriptElement = std::variant<TextElement, ImageElement, FieldElement>;

inline const ScriptSource& sourceOf(const ScriptElement& element) {
    return std::visit([](const auto& drawn) -> const ScriptSource& { return drawn.source; }, element);
}

inline const Placement& placementOf(const ScriptElement& element) {
    return std::visit([](const auto& drawn) -> const Placement& { return drawn.placement; }, element);
}

/// One stretch of time of a page.
struct ScriptStep {
    StepKind kind = StepKind::Still;
    Effect effect = Effect::Fade; ///< Enter and Leave
    int pixels = 1;               ///< dots moved at once
    int milliseconds = 0;         ///< of one move or fade level; of the whole for Still; of half a blink
    int count = 0;                ///< blinks
    std::size_t elementCount = 0; ///< how many of the page's elements had been drawn by then
};

/// What is drawn between two clearings of the panel, and when it is seen.
struct ScriptPage {
    std::size_t firstLine = 0; ///< of the script, from 1
    std::vector<ScriptElement> elements;
    std::vector<ScriptStep> steps;
};

} // namespace orvista
