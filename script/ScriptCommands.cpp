#include "script/ScriptCommands.h"

#include "model/Item.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace orvista {

namespace {

using Element = std::optional<ScriptElement>;
using Step = std::optional<ScriptStep>;

/// The word of the command that draws a clock.
constexpr std::string_view wordOf(LiveValue clock) {
    return std::ranges::find(clockStyles, clock, &ClockStyle::value)->shown;
}

class Command {
public:
    Command(std::size_t line, ScriptWords& words) : words_(words) {
        source_.line = line;
        const std::size_t start = words_.column();
        name_ = words_.word();
        source_.command = {start, name_.size()};
    }

    ScriptCommand perform();

    struct Row {
        std::string_view word;
        ScriptCommand (Command::*perform)(LedFont font);
        bool writes = false; ///< in either font: the small one's word has a suffix
        std::string wordIn(LedFont font) const {
            return std::string(word).append(styleOf(font).commandSuffix);
        }
    };
    static const std::array<Row, 9> rows;

private:
    ScriptCommand clear(LedFont /*font*/) { return ClearPage{}; }
    ScriptCommand enter(LedFont /*font*/) { return orBadArgument(effect(StepKind::Enter)); }
    ScriptCommand leave(LedFont /*font*/) { return orBadArgument(effect(StepKind::Leave)); }
    ScriptCommand act(LedFont /*font*/) { return orBadArgument(hold()); }
    ScriptCommand image(LedFont /*font*/) { return orBadArgument(bitmap()); }
    ScriptCommand text(LedFont font) { return orBadArgument(textIn(font)); }
    ScriptCommand variable(LedFont font);
    ScriptCommand date(LedFont font) { return orBadArgument(clock(font, LiveValue::Date)); }
    ScriptCommand time(LedFont font) { return orBadArgument(clock(font, LiveValue::Time)); }

    Element textIn(LedFont font);
    Element bitmap();
    Element clock(LedFont font, LiveValue value);
    /// x y fg bg, as every drawing command has them.
    std::optional<Placement> placement();

    Step effect(StepKind kind);
    Step hold();

    template <typename Part>
    static ScriptCommand orBadArgument(std::optional<Part> part) {
        return part ? ScriptCommand(std::move(*part)) : RemarkReason::BadArgument;
    }

    ScriptWords& words_;
    ScriptSource source_;
    std::string_view name_;
};

/// All that the display knows.
constexpr std::array<Command::Row, 9> Command::rows{{{clearScript, &Command::clear},
                                                     {"TEXT", &Command::text, true},
                                                     {"IMG", &Command::image},
                                                     {"DISPVAR", &Command::variable, true},
                                                     {wordOf(LiveValue::Time), &Command::time, true},
                                                     {wordOf(LiveValue::Date), &Command::date, true},
                                                     {"IN", &Command::enter},
                                                     {"OUT", &Command::leave},
                                                     {"ACT", &Command::act}}};

ScriptCommand Command::perform() {
    constexpr auto suffix = styleOf(LedFont::Small5x7).commandSuffix;
    const std::size_t length = name_.size() - std::min(name_.size(), suffix.size());
    const bool mayBeSmall = equalsIgnoringCase(name_.substr(length), suffix);
    for (const Row& row : rows) {
        if (equalsIgnoringCase(name_, row.word))
            return (this->*row.perform)(LedFont::Large8x15);
        if (row.writes && mayBeSmall && equalsIgnoringCase(name_.substr(0, length), row.word))
            return (this->*row.perform)(LedFont::Small5x7);
    }
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

Element Command::textIn(LedFont font) {
    const auto placement = this->placement();
    const auto text = words_.quoted();
    if (!placement || !text)
        return std::nullopt;
    source_.content = {source_.content.column + 1, text->size()}; // after the quote
    return TextElement{*placement, font, std::string(*text), source_};
}

Element Command::bitmap() {
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

Step Command::hold() {
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

std::vector<std::string> commandWords() {
    std::vector<std::string> words;
    for (const Command::Row& row : Command::rows) {
        words.push_back(row.wordIn(LedFont::Large8x15));
        if (row.writes)
            words.push_back(row.wordIn(LedFont::Small5x7));
    }
    return words;
}

} // namespace orvista
