#include "sheets/AsciiText.h"

#include "model/Utf8.h"

#include <algorithm>

namespace orvista {

namespace {

/// The letters of U+00C0 to U+017F without their accents, "?" for what is no accented letter.
constexpr std::string_view plainLetters = "AAAAAA?CEEEEIIII"
                                          "?NOOOOO?OUUUUY??"
                                          "aaaaaa?ceeeeiiii"
                                          "?nooooo?ouuuuy?y"
                                          "AaAaAaCcCcCcCcDd"
                                          "DdEeEeEeEeEeGgGg"
                                          "GgGgHhHhIiIiIiIi"
                                          "Ii??JjKk?LlLlLl?"
                                          "?LlNnNnNn???OoOo"
                                          "Oo??RrRrRrSsSsSs"
                                          "SsTtTtTtUuUuUuUu"
                                          "UuUuWwYyYZzZzZz?";
constexpr char32_t firstLetter = 0xC0;
constexpr char32_t sharpS = 0xDF;
/// Those that stand by themselves after their letter.
constexpr char32_t firstAccent = 0x300;
constexpr char32_t lastAccent = 0x36F;
static_assert(plainLetters.size() == 0x180 - firstLetter);

char32_t codePointOf(std::string_view character) {
    if (character.size() == 1)
        return static_cast<unsigned char>(character.front());
    char32_t point = static_cast<unsigned char>(character.front()) & (0xFFU >> (character.size() + 1));
    for (const char unit : character.substr(1))
        point = point << 6 | (static_cast<unsigned char>(unit) & 0x3FU);
    return point;
}

bool isControlPoint(char32_t point) {
    return point < ' ' || (point >= 0x7F && point < 0xA0) || point == 0x2028 || point == 0x2029 ||
           (point & 0xFFFE) == 0xFFFE;
}

/// Each character as `write` has it; what is no UTF-8 byte by byte as "?".
template <typename Write>
std::string rewritten(std::string_view utf8, Write write) {
    std::string text;
    while (!utf8.empty()) {
        const std::size_t length = utf8CharacterLength(utf8);
        const std::string_view character = utf8.substr(0, std::max<std::size_t>(length, 1));
        const char32_t point = length == 0 ? 0 : codePointOf(character);
        if (isControlPoint(point))
            text += '?';
        else
            text.append(write(character, point));
        utf8.remove_prefix(character.size());
    }
    return text;
}

std::string_view plainLetter(std::string_view character, char32_t point) {
    if (point < 0x7F)
        return character;
    if (point == sharpS)
        return "ss";
    if (point >= firstAccent && point <= lastAccent)
        return "";
    if (point < firstLetter || point - firstLetter >= plainLetters.size())
        return "?";
    return plainLetters.substr(point - firstLetter, 1);
}

} // namespace

std::string asciiText(std::string_view utf8) {
    return rewritten(utf8, plainLetter);
}

std::string withoutControls(std::string_view utf8) {
    return rewritten(utf8, [](std::string_view character, char32_t) { return character; });
}

} // namespace orvista
