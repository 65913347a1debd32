#pragma once

#include "script/ScriptPage.h"
#include "script/ScriptWords.h"

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// One line of a script, as a value.
namespace orvista {

/// Why a line does nothing.
enum class RemarkReason {
    UnknownCommand,
    BadArgument,   ///< a word is missing, or is not what it should be
    VariableRange, ///< a variable number out of range
    PageFull       ///< the page has maximumElementsOfAPage already
};
inline constexpr std::size_t remarkReasons = 4;

struct ClearPage {};

/// What a line does; the reason when that is nothing. `words` then knows which word was wrong.
using ScriptCommand = std::variant<ClearPage, ScriptElement, ScriptStep, RemarkReason>;

/// \param line its number, from 1
/// \param words of a line that is not blank, none of them taken yet
ScriptCommand scriptCommand(std::size_t line, ScriptWords& words);

/// The first words of all commands, in capitals.
std::vector<std::string> commandWords();

} // namespace orvista
