#include "display/ScriptInterpreter.h"

#include "model/Files.h"
#include "model/ItemKind.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace orvista {

namespace {

using Words = std::string_view;

/// Takes the next field off the front; empty when there is none.
std::string_view takeWord(Words& line) {
    line = trimLeadingBlanks(line);
    const std::string_view word = line.substr(0, line.find(' '));
    line.remove_prefix(word.size());
    return word;
}

/// Digits alone; a larger number counts as `maximum`.
std::optional<int> takeNumber(Words& line, int maximum) {
    const std::string_view word = takeWord(line);
    if (!GenenalModule::IsAllDigits(word))
        return std::nullopt;
    int number = 0;
    for (const char digit : word)
        number = std::min(number * 10 + (digit - '0'), maximum);
    return number;
}

std::optional<int> takeCoordinate(Words& line) {
    line = trimLeadingBlanks(line);
    const bool isNegative = line.starts_with('-');
    if (isNegative)
        line.remove_prefix(1);
    const auto number = takeNumber(line, maximumCoordinate);
    return number && isNegative ? std::optional(-*number) : number;
}

std::optional<Led> takeColour(Words& line) {
    static constexpr std::pair<std::string_view, Led> colours[] = {
        {"RED", Led::Red}, {"GREEN", Led::Green}, {"ORANGE", Led::Orange}, {"BLACK", Led::Off}};
    const std::string_view word = takeWord(line);
    for (const auto& [name, led] : colours)
        if (equalsIgnoringCase(word, name))
            return led;
    return std::nullopt;
}

/// x y fg bg, as every drawing command has them.
std::optional<Placement> takePlacement(Words& line) {
    const auto x = takeCoordinate(line);
    const auto y = takeCoordinate(line);
    const auto foreground = takeColour(line);
    const auto background = takeColour(line);
    if (!x || !y || !foreground || !background)
        return std::nullopt;
    return Placement{*x, *y, *foreground, *background};
}

/// From the first to the last double quote: quotes within are not escaped. What follows does not count.
std::optional<std::string_view> takeQuoted(Words& line) {
    line = trimLeadingBlanks(line);
    const auto last = line.rfind('"');
    if (!line.starts_with('"') || last == 0)
        return std::nullopt;
    return line.substr(1, last - 1);
}

using Element = std::optional<ScriptElement>;

Element textElement(Words line, LedFont font) {
    const auto placement = takePlacement(line);
    const auto text = takeQuoted(line);
    if (!placement || !text)
        return std::nullopt;
    return TextElement{*placement, font, std::string(*text)};
}

Element imageElement(Words line) {
    const auto placement = takePlacement(line);
    const std::string_view name = trimBlanks(line);
    if (!placement || name.empty())
        return std::nullopt;
    return ImageElement{*placement, std::string(name), nullptr};
}

Element variableElement(Words line, LedFont font) {
    const auto placement = takePlacement(line);
    const std::string_view name = takeWord(line);
    if (!placement)
        return std::nullopt;
    if (const auto index = floatVariables.indexOfName(name))
        return FieldElement{*placement, font, LiveValue::Float, *index};
    if (const auto index = booleanVariables.indexOfName(name))
        return FieldElement{*placement, font, LiveValue::Boolean, *index};
    return std::nullopt;
}

Element clockElement(Words line, LedFont font, LiveValue value) {
    const auto placement = takePlacement(line);
    if (!placement)
        return std::nullopt;
    return FieldElement{*placement, font, value, 0};
}

Element drawnElement(std::string_view command, Words line) {
    if (equalsIgnoringCase(command, "IMG"))
        return imageElement(line);
    LedFont font = LedFont::Large8x15;
    // The small font's commands are the large one's with an S behind.
    if (endsWithIgnoringCase(command, "S")) {
        font = LedFont::Small5x7;
        command.remove_suffix(1);
    }
    if (equalsIgnoringCase(command, "TEXT"))
        return textElement(line, font);
    if (equalsIgnoringCase(command, "DISPVAR"))
        return variableElement(line, font);
    if (equalsIgnoringCase(command, "TIME"))
        return clockElement(line, font, LiveValue::Time);
    if (equalsIgnoringCase(command, "DATE"))
        return clockElement(line, font, LiveValue::Date);
    return std::nullopt;
}

using Step = std::optional<ScriptStep>;

Step effectStep(StepKind kind, Words line) {
    static constexpr std::pair<std::string_view, Effect> effects[] = {{"GO-LEFT", Effect::Left},
                                                                      {"GO-RIGHT", Effect::Right},
                                                                      {"GO-UP", Effect::Up},
                                                                      {"GO-DOWN", Effect::Down},
                                                                      {"FADE", Effect::Fade}};
    const std::string_view word = takeWord(line);
    for (const auto& [name, effect] : effects) {
        if (!equalsIgnoringCase(word, name))
            continue;
        const auto pixels = effect == Effect::Fade ? 1 : takeNumber(line, maximumCoordinate);
        const auto speed = takeNumber(line, maximumStepMilliseconds);
        // A step of no dots would never arrive.
        if (!pixels || *pixels == 0 || !speed)
            return std::nullopt;
        return ScriptStep{.kind = kind, .effect = effect, .pixels = *pixels, .milliseconds = *speed};
    }
    return std::nullopt;
}

Step actStep(Words line) {
    const std::string_view word = takeWord(line);
    if (equalsIgnoringCase(word, "STILL")) {
        if (const auto hold = takeNumber(line, maximumHold))
            return ScriptStep{.kind = StepKind::Still, .milliseconds = *hold};
    } else if (equalsIgnoringCase(word, "BLINK")) {
        const auto count = takeNumber(line, maximumBlinks);
        const auto half = takeNumber(line, maximumStepMilliseconds);
        if (count && half)
            return ScriptStep{.kind = StepKind::Blink, .milliseconds = *half, .count = *count};
    }
    return std::nullopt;
}

Step timedStep(std::string_view command, Words line) {
    if (equalsIgnoringCase(command, "IN"))
        return effectStep(StepKind::Enter, line);
    if (equalsIgnoringCase(command, "OUT"))
        return effectStep(StepKind::Leave, line);
    if (equalsIgnoringCase(command, "ACT"))
        return actStep(line);
    return std::nullopt;
}

class Interpreter {
public:
    void take(std::size_t number, std::string_view line) {
        if (!trimBlanks(line).empty() && !perform(line))
            remark(number, line);
    }

    InterpretedScript finish() {
        endPage();
        return std::move(result_);
    }

private:
    bool perform(Words line) {
        const std::string_view command = takeWord(line);
        if (equalsIgnoringCase(command, clearScript)) {
            endPage();
            page_.emplace();
            return true;
        }
        if (auto step = timedStep(command, line)) {
            addStep(*step);
            return true;
        }
        auto element = drawnElement(command, line);
        if (!element || page().elements.size() >= maximumElementsOfAPage)
            return false;
        page().elements.push_back(std::move(*element));
        return true;
    }

    void addStep(ScriptStep step) {
        step.elementCount = page().elements.size();
        page().steps.push_back(step);
        if (step.kind == StepKind::Leave)
            endPage();
    }

    /// The page being written; a script need not begin with CLEAR.
    ScriptPage& page() {
        if (!page_)
            page_.emplace();
        return *page_;
    }

    void endPage() {
        if (!page_)
            return;
        const std::size_t shown = page_->steps.empty() ? 0 : page_->steps.back().elementCount;
        if (shown < page_->elements.size())
            page_->steps.push_back({.kind = StepKind::Still,
                                    .milliseconds = defaultHold,
                                    .elementCount = page_->elements.size()});
        result_.pages.push_back(std::move(*page_));
        page_.reset();
    }

    void remark(std::size_t number, std::string_view line) {
        if (result_.remarks.size() < maximumRemarks)
            result_.remarks.push_back({number, std::string(line.substr(0, maximumRemarkLength))});
    }

    InterpretedScript result_;
    std::optional<ScriptPage> page_;
};

} // namespace

InterpretedScript interpretScript(std::string_view script) {
    MemorySource source(script);
    LineReader lines(source);
    Interpreter interpreter;
    std::string line;
    for (std::size_t number = 1; lines.next(line); ++number)
        interpreter.take(number, line);
    return interpreter.finish();
}

} // namespace orvista
