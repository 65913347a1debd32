#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text helpers over single-byte text. Blank means code 32 only (tabs and no-break spaces are ordinary
/// characters), and case is folded for the ASCII letters only, whatever the locale.
namespace orvista {

std::string_view trimBlanks(std::string_view text);
std::string_view trimLeadingBlanks(std::string_view text);
/// For cells of tables: spreadsheets and people leave tabs around a word, too.
std::string_view trimBlanksAndTabs(std::string_view text);

std::string upperAscii(std::string_view text);
std::string lowerAscii(std::string_view text);
bool equalsIgnoringCase(std::string_view left, std::string_view right);
/// True when `text` begins with `prefix`, ASCII case folded.
bool startsWithIgnoringCase(std::string_view text, std::string_view prefix);
bool endsWithIgnoringCase(std::string_view text, std::string_view suffix);

/// How many bytes two texts have in common before the first one that differs.
std::size_t sameAtStart(std::string_view one, std::string_view other);
/// The same after the last one that differs.
std::size_t sameAtEnd(std::string_view one, std::string_view other);

} // namespace orvista

namespace orvista::GenenalModule {

/// True when `text` is not empty and holds nothing but the digits 0 to 9.
bool IsAllDigits(std::string_view text);

} // namespace orvista::GenenalModule
