#include "display/ScriptCommands.h"

#include "model/ItemKind.h"
#include "model/Text.h"

#include <string>
#include <utility>

namespace orvista {

namespace {

using Element = std::optional<ScriptElement>;
using Step = std::optional<ScriptStep>;

constexpr int tooLargeAnIndex = 1000;

/// What a variable's name says.
struct VariableName {
    LiveValue kind = LiveValue::Float;
    std::size_t number = 0;
    std::size_t count = 0; ///< of the variables of that kind
};

std::optional<VariableName> variableName(std::string_view name, std::string_view word, LiveValue kind,
                                         std::size_t count) {
    if (!startsWithIgnoringCase(name, word))
        return std::nullopt;
    const auto number =
        ScriptWords(name.substr(word.size())).number(ScriptArgument::Variable, tooLargeAnIndex);
    if (!number)
        return std::nullopt;
    return VariableName{kind, static_cast<std::size_t>(*number), count};
}

class Command {
public:
    Command(std::size_t line, ScriptWords& words) : words_(words) {
        source_.line = line;
        source_.command = words.column();
        name_ = words.word();
    }

    ScriptCommand perform();

private:
    ScriptCommand drawn();
    Element text(LedFont font);
    Element image();
    ScriptCommand variable(LedFont font);
    Element clock(LedFont font, LiveValue value);
    std::optional<Placement> placement();

    Step effect(StepKind kind);
    Step act();

    template <typename Part>
    static ScriptCommand orBadArgument(std::optional<Part> part) {
        return part ? ScriptCommand(std::move(*part)) : RemarkReason::BadArgument;
    }

    ScriptWords& words_;
    ScriptSource source_;
    std::string_view name_;
};

ScriptCommand Command::perform() {
    if (equalsIgnoringCase(name_, clearScript))
        return ClearPage{};
    if (equalsIgnoringCase(name_, "IN"))
        return orBadArgument(effect(StepKind::Enter));
    if (equalsIgnoringCase(name_, "OUT"))
        return orBadArgument(effect(StepKind::Leave));
    if (equalsIgnoringCase(name_, "ACT"))
        return orBadArgument(act());
    return drawn();
}

ScriptCommand Command::drawn() {
    std::string_view command = name_;
    if (equalsIgnoringCase(command, "IMG"))
        return orBadArgument(image());
    LedFont font = LedFont::Large8x15;
    // The small font's commands are the large one's with an S behind.
    if (endsWithIgnoringCase(command, "S")) {
        font = LedFont::Small5x7;
        command.remove_suffix(1);
    }
    if (equalsIgnoringCase(command, "TEXT"))
        return orBadArgument(text(font));
    if (equalsIgnoringCase(command, "DISPVAR"))
        return variable(font);
    if (equalsIgnoringCase(command, "TIME"))
        return orBadArgument(clock(font, LiveValue::Time));
    if (equalsIgnoringCase(command, "DATE"))
        return orBadArgument(clock(font, LiveValue::Date));
    return RemarkReason::UnknownCommand;
}

std::optional<Placement> Command::placement() {
    const auto placement = words_.placement();
    source_.content = words_.column();
    return placement;
}

Element Command::text(LedFont font) {
    const auto placement = this->placement();
    const auto text = words_.quoted();
    if (!placement || !text)
        return std::nullopt;
    ++source_.content; // behind the quote
    return TextElement{*placement, font, std::string(*text), source_};
}

Element Command::image() {
    const auto placement = this->placement();
    const std::string_view name = words_.rest();
    if (name.empty())
        words_.refuse(ScriptArgument::FileName, words_.column(), name);
    if (!placement || name.empty())
        return std::nullopt;
    return ImageElement{*placement, std::string(name), nullptr, source_};
}

ScriptCommand Command::variable(LedFont font) {
    const auto placement = this->placement();
    const std::string_view word = words_.word();
    auto name = variableName(word, floatVariableName, LiveValue::Float, floatVariableCount);
    if (!name)
        name = variableName(word, booleanVariableName, LiveValue::Boolean, booleanVariableCount);
    const bool isInRange = name && name->number >= 1 && name->number <= name->count;
    if (!isInRange)
        words_.refuse(ScriptArgument::Variable, source_.content, word);
    if (!placement || !name)
        return RemarkReason::BadArgument;
    if (!isInRange)
        return RemarkReason::VariableRange;
    return FieldElement{*placement, font, name->kind, name->number - 1, source_};
}

Element Command::clock(LedFont font, LiveValue value) {
    const auto placement = this->placement();
    if (!placement)
        return std::nullopt;
    source_.content = source_.command;
    return FieldElement{*placement, font, value, 0, source_};
}

Step Command::effect(StepKind kind) {
    static constexpr std::pair<std::string_view, Effect> effects[] = {{"GO-LEFT", Effect::Left},
                                                                      {"GO-RIGHT", Effect::Right},
                                                                      {"GO-UP", Effect::Up},
                                                                      {"GO-DOWN", Effect::Down},
                                                                      {"FADE", Effect::Fade}};
    const std::size_t start = words_.column();
    const std::string_view word = words_.word();
    for (const auto& [name, effect] : effects) {
        if (!equalsIgnoringCase(word, name))
            continue;
        const std::size_t pixelsStart = words_.column();
        const auto pixels =
            effect == Effect::Fade ? 1 : words_.number(ScriptArgument::Pixels, maximumCoordinate);
        // A step of no dots would never arrive.
        if (pixels == 0)
            words_.refuse(ScriptArgument::Pixels, pixelsStart, "0");
        const auto speed = words_.number(ScriptArgument::Speed, maximumStepMilliseconds);
        if (words_.wrong())
            return std::nullopt;
        return ScriptStep{.kind = kind, .effect = effect, .pixels = *pixels, .milliseconds = *speed};
    }
    words_.refuse(ScriptArgument::Effect, start, word);
    return std::nullopt;
}

Step Command::act() {
    const std::size_t start = words_.column();
    const std::string_view word = words_.word();
    if (equalsIgnoringCase(word, "STILL")) {
        if (const auto hold = words_.number(ScriptArgument::Hold, maximumHold))
            return ScriptStep{.kind = StepKind::Still, .milliseconds = *hold};
    } else if (equalsIgnoringCase(word, "BLINK")) {
        const auto count = words_.number(ScriptArgument::BlinkCount, maximumBlinks);
        const auto half = words_.number(ScriptArgument::BlinkTime, maximumStepMilliseconds);
        if (count && half)
            return ScriptStep{.kind = StepKind::Blink, .milliseconds = *half, .count = *count};
    } else {
        words_.refuse(ScriptArgument::Act, start, word);
    }
    return std::nullopt;
}

} // namespace

ScriptCommand scriptCommand(std::size_t line, ScriptWords& words) {
    return Command(line, words).perform();
}

} // namespace orvista
