#include "model/Text.h"

#include <algorithm>

namespace orvista {

namespace {

/// As many bytes are compared at once, which is far faster than one by one.
constexpr std::size_t piece = 256;

char upperLetter(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
char lowerLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

std::string_view trimLeadingBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{} : text.substr(first);
}

std::string_view trimBlanks(std::string_view text) {
    text = trimLeadingBlanks(text);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view trimBlanksAndTabs(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string upperAscii(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), upperLetter);
    return upper;
}

std::string lowerAscii(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), lowerLetter);
    return lower;
}

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return upperLetter(a) == upperLetter(b); });
}

bool startsWithIgnoringCase(std::string_view text, std::string_view prefix) {
    return equalsIgnoringCase(text.substr(0, prefix.size()), prefix);
}

bool endsWithIgnoringCase(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() &&
           equalsIgnoringCase(text.substr(text.size() - suffix.size()), suffix);
}

std::size_t sameAtStart(std::string_view one, std::string_view other) {
    const std::size_t least = std::min(one.size(), other.size());
    std::size_t same = 0;
    while (same + piece <= least && one.substr(same, piece) == other.substr(same, piece))
        same += piece;
    while (same < least && one[same] == other[same])
        ++same;
    return same;
}

std::size_t sameAtEnd(std::string_view one, std::string_view other) {
    const std::size_t least = std::min(one.size(), other.size());
    std::size_t same = 0;
    while (same + piece <= least &&
           one.substr(one.size() - same - piece, piece) == other.substr(other.size() - same - piece, piece))
        same += piece;
    while (same < least && one[one.size() - same - 1] == other[other.size() - same - 1])
        ++same;
    return same;
}

} // namespace orvista

namespace orvista::GenenalModule {

bool IsAllDigits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace orvista::GenenalModule
