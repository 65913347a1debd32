#include "check/FixFamilies.h"
#include "model/Text.h"
#include "model/WordDistance.h"
#include "script/ScriptCommands.h"
#include "script/ScriptText.h"
#include "script/ScriptWords.h"
#include "script/Styles.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

namespace {

using Words = std::vector<std::string>;

Words wordsOf(const auto& styles) {
    Words words;
    for (const auto& style : styles)
        words.emplace_back(style.shown);
    return words;
}

/// What may stand for an argument, where that is one of a few words.
Words wordsFor(ScriptArgument argument) {
    switch (argument) {
    case ScriptArgument::Foreground:
    case ScriptArgument::Background:
        return wordsOf(colourStyles);
    case ScriptArgument::Effect:
        return wordsOf(effectStyles);
    case ScriptArgument::Act:
        return wordsOf(actStyles);
    default:
        return {};
    }
}

/// The only word that is one letter from the finding's; none changes nothing.
std::vector<Fix> nearestWord(const FixGround& ground, const Place& place, const Words& words) {
    constexpr std::size_t longest = 9; // of all words, and a letter
    if (place.length == 0 || place.length > longest)
        return {};
    const ScriptText lines(scriptOf(ground.project, place.item));
    const std::string typed = upperAscii(lines.line(place.line).substr(place.column - 1, place.length));
    std::string nearest;
    for (const std::string& word : words) {
        if (wordDistance(typed, word) != 1)
            continue;
        if (!nearest.empty())
            return {};
        nearest = word;
    }
    if (nearest.empty())
        return {};
    return {{"Write " + nearest, {{place.item, place.line, place.column, place.length, nullptr, nearest}}}};
}

} // namespace

std::vector<Fix> commandFixes(const FixGround& ground, const Finding& finding) {
    return nearestWord(ground, finding.place, commandWords());
}

std::vector<Fix> argumentFixes(const FixGround& ground, const Finding& finding) {
    const Place& place = finding.place;
    const ScriptText lines(scriptOf(ground.project, place.item));
    ScriptWords words(lines.line(place.line).substr(lines.skipped(place.line)));
    scriptCommand(place.line, words);
    return words.wrong() ? nearestWord(ground, place, wordsFor(words.wrong()->argument)) : std::vector<Fix>();
}

} // namespace orvista
