#include "script/ScriptCommands.h"

#include "model/Item.h"
#include "model/Text.h"

#include <algorithm>
#include <string>
#include <utility>

namespace orvista {

namespace {

using Element = std::optional<ScriptElement>;
using Step = std::optional<ScriptStep>;

class Command {
public:
    Command(std::size_t line, ScriptWords& words) : words_(words) {
        source_.line = line;
        const std::size_t start = words.column();
        name_ = words.word();
        source_.command = {start, name_.size()};
    }

    ScriptCommand perform();

private:
    ScriptCommand drawn();
    Element text(LedFont font);
    Element image();
    ScriptCommand variable(LedFont font);
    Element clock(LedFont font, LiveValue value);
    /// x y fg bg, as every drawing command has them.
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
    // The small font's commands are the large one's with an S after them.
    if (constexpr auto suffix = styleOf(LedFont::Small5x7).commandSuffix;
        endsWithIgnoringCase(command, suffix)) {
        font = LedFont::Small5x7;
        command.remove_suffix(suffix.size());
    }
    if (equalsIgnoringCase(command, "TEXT"))
        return orBadArgument(text(font));
    if (equalsIgnoringCase(command, "DISPVAR"))
        return variable(font);
    for (const ClockStyle& style : clockStyles)
        if (equalsIgnoringCase(command, style.shown))
            return orBadArgument(clock(font, style.value));
    return RemarkReason::UnknownCommand;
}

std::optional<Placement> Command::placement() {
    const auto x = words_.coordinate(ScriptArgument::X);
    const auto y = words_.coordinate(ScriptArgument::Y);
    const auto foreground = words_.colour(ScriptArgument::Foreground);
    const std::size_t start = words_.column();
    const auto background = words_.colour(ScriptArgument::Background);
    source_.background = {start, words_.lastWord().size()};
    source_.content = {words_.column(), 0};
    if (!x || !y || !foreground || !background)
        return std::nullopt;
    return Placement{*x, *y, *foreground, *background};
}

Element Command::text(LedFont font) {
    const auto placement = this->placement();
    const auto text = words_.quoted();
    if (!placement || !text)
        return std::nullopt;
    source_.content = {source_.content.column + 1, text->size()}; // after the quote
    return TextElement{*placement, font, std::string(*text), source_};
}

Element Command::image() {
    const auto placement = this->placement();
    const std::string_view name = words_.rest();
    if (name.empty())
        words_.refuse(ScriptArgument::FileName, words_.column(), name);
    if (!placement || name.empty())
        return std::nullopt;
    source_.content.length = name.size();
    return ImageElement{*placement, std::string(name), source_};
}

ScriptCommand Command::variable(LedFont font) {
    const auto placement = this->placement();
    const std::string_view word = words_.word();
    source_.content.length = word.size();
    const auto item = variableNamed(word);
    if (!item)
        words_.refuse(ScriptArgument::Variable, source_.content.column, word);
    if (placement && !item && (isNumbered(word, Kind::Float) || isNumbered(word, Kind::Boolean)))
        return RemarkReason::VariableRange;
    if (words_.wrong())
        return RemarkReason::BadArgument;
    const LiveValue value = item->kind == Kind::Float ? LiveValue::Float : LiveValue::Boolean;
    return FieldElement{*placement, font, value, item->index, source_};
}

Element Command::clock(LedFont font, LiveValue value) {
    const auto placement = this->placement();
    if (!placement)
        return std::nullopt;
    source_.content = source_.command;
    return FieldElement{*placement, font, value, 0, source_};
}

Step Command::effect(StepKind kind) {
    const std::size_t start = words_.column();
    const std::string_view word = words_.word();
    for (const auto& [effect, name] : effectStyles) {
        if (!equalsIgnoringCase(word, name))
            continue;
        const std::size_t pixelsStart = words_.column();
        const auto pixels =
            effect == Effect::Fade ? 1 : words_.number(ScriptArgument::Pixels, maximumCoordinate);
        // A step of no dots would never arrive.
        if (pixels == 0)
            words_.refuse(ScriptArgument::Pixels, pixelsStart, words_.lastWord());
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
    const auto style = std::ranges::find_if(
        actStyles, [word](const ActStyle& known) { return equalsIgnoringCase(word, known.shown); });
    if (style == actStyles.end()) {
        words_.refuse(ScriptArgument::Act, start, word);
    } else if (style->act == StepKind::Still) {
        if (const auto hold = words_.number(ScriptArgument::Hold, maximumHold))
            return ScriptStep{.kind = StepKind::Still, .milliseconds = *hold};
    } else {
        const auto count = words_.number(ScriptArgument::BlinkCount, maximumBlinks);
        const auto half = words_.number(ScriptArgument::BlinkTime, maximumStepMilliseconds);
        if (count && half)
            return ScriptStep{.kind = StepKind::Blink, .milliseconds = *half, .count = *count};
    }
    return std::nullopt;
}

} // namespace

ScriptCommand scriptCommand(std::size_t line, ScriptWords& words) {
    return Command(line, words).perform();
}

} // namespace orvista
