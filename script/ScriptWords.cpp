#include "script/ScriptWords.h"

#include "model/Text.h"

#include <algorithm>

namespace orvista {

namespace {

/// Digits alone; a larger number counts as `maximum`.
std::optional<int> digits(std::string_view word, int maximum) {
    if (!GenenalModule::IsAllDigits(word))
        return std::nullopt;
    int number = 0;
    for (const char digit : word)
        number = std::min(number * 10 + (digit - '0'), maximum);
    return number;
}

} // namespace

ScriptWords::ScriptWords(std::string_view line, std::size_t skipped) : line_(line), skipped_(skipped) {
    skipBlanks();
}

void ScriptWords::skipBlanks() {
    position_ = std::min(line_.find_first_not_of(' ', position_), line_.size());
}

std::string_view ScriptWords::word() {
    const std::string_view left = line_.substr(position_);
    last_ = left.substr(0, left.find(' '));
    position_ += last_.size();
    skipBlanks();
    return last_;
}

std::string_view ScriptWords::rest() {
    return trimBlanks(line_.substr(position_));
}

void ScriptWords::refuse(ScriptArgument argument, std::size_t column, std::string_view word) {
    if (!wrong_)
        wrong_ = Wrong{argument, column, word};
}

std::optional<int> ScriptWords::number(ScriptArgument argument, int maximum) {
    const std::size_t start = column();
    const std::string_view word = this->word();
    const auto number = digits(word, maximum);
    if (!number)
        refuse(argument, start, word);
    return number;
}

std::optional<int> ScriptWords::coordinate(ScriptArgument argument) {
    const std::size_t start = column();
    const std::string_view word = this->word();
    const bool isNegative = word.starts_with('-');
    const auto number = digits(word.substr(isNegative ? 1 : 0), maximumCoordinate);
    if (!number)
        refuse(argument, start, word);
    return number && isNegative ? std::optional(-*number) : number;
}

std::optional<Led> ScriptWords::colour(ScriptArgument argument) {
    const std::size_t start = column();
    const std::string_view name = word();
    for (const ColourStyle& style : colourStyles)
        if (equalsIgnoringCase(name, style.shown))
            return style.led;
    refuse(argument, start, name);
    return std::nullopt;
}

std::optional<std::string_view> ScriptWords::quoted() {
    const std::string_view left = line_.substr(position_);
    const auto last = left.rfind('"');
    if (!left.starts_with('"') || last == 0) {
        refuse(ScriptArgument::Text, column(), left);
        return std::nullopt;
    }
    return left.substr(1, last - 1);
}

} // namespace orvista
