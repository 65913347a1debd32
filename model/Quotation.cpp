#include "model/Quotation.h"

#include "model/Utf8.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <cstddef>

namespace orvista {

namespace {

constexpr std::size_t mostCharacters = 40;

bool isPrintable(unsigned char byte) {
    const char32_t codePoint = windows1252CodePoint(byte);
    return codePoint >= 0x20 && (codePoint < 0x7F || codePoint >= 0xA0);
}

/// One character (UTF-8) of a quotation.
std::string_view shown(std::string_view character) {
    if (character == "\t")
        return "<a tab>";
    if (character == "\r" || character == "\n")
        return " ";
    const bool isControl =
        character < " " || character == "\x7F" || (character >= "\xC2\x80" && character <= "\xC2\x9F");
    return isControl ? "<a control character>" : character;
}

} // namespace

std::string quotation(std::string_view utf8) {
    std::string text = "\"";
    for (std::size_t count = 0; !utf8.empty(); ++count) {
        if (count == mostCharacters)
            return text.append("…\"");
        const std::string_view character =
            utf8.substr(0, std::max<std::size_t>(utf8CharacterLength(utf8), 1));
        text.append(shown(character));
        utf8.remove_prefix(character.size());
    }
    return text.append("\"");
}

std::string deviceQuotation(std::string_view bytes) {
    return quotation(utf8FromWindows1252(bytes));
}

std::string printable(std::string_view bytes) {
    std::string shown(bytes);
    for (char& character : shown)
        if (!isPrintable(static_cast<unsigned char>(character)))
            character = '?';
    return utf8FromWindows1252(shown);
}

} // namespace orvista
