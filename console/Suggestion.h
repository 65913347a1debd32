#pragma once

#include <span>
#include <string>
#include <string_view>

namespace orvista::console {

/// Of the words the one that was probably meant: letters that are wrong, missing, too many or swapped with
/// the next one, up to a third of what was typed. Empty when there is none.
std::string closestWord(std::string_view typed, std::span<const std::string> words);

/// "X is not a command; did you mean Y?", or "X is not a command; see orvista --help".
/// \param problem "X is not a command"
/// \param typed X
/// \param page "orvista --help"
std::string withSuggestion(const std::string& problem, std::string_view typed,
                           std::span<const std::string> words, const std::string& page);

} // namespace orvista::console
