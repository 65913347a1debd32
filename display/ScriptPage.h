#pragma once

#include "display/LedFont.h"
#include "display/LedImage.h"

#include <cstddef>
#include <memory>
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

struct TextElement {
    Placement placement;
    LedFont font = LedFont::Large8x15;
    std::string text; ///< Windows-1252
};

struct ImageElement {
    Placement placement;
    std::string name;
    std::shared_ptr<const LedImage> image; ///< looked up when a programme is made; none draws nothing
};

enum class LiveValue { Float, Boolean, Time, Date };

struct FieldElement {
    Placement placement;
    LedFont font = LedFont::Large8x15;
    LiveValue value = LiveValue::Float;
    std::size_t index = 0; ///< of the variable, from 0
};

using ScriptElement = std::variant<TextElement, ImageElement, FieldElement>;

enum class StepKind { Enter, Still, Blink, Leave };
enum class Effect { Left, Right, Up, Down, Fade };

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
    std::vector<ScriptElement> elements;
    std::vector<ScriptStep> steps;
};

} // namespace orvista
