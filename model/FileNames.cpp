#include "model/FileNames.h"

#include "model/Text.h"

#include <algorithm>
#include <array>

namespace orvista {

namespace {

bool isControlCharacter(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

} // namespace

bool isReservedOnWindows(std::string_view name) {
    const std::string stem = upperAscii(trimBlanks(name.substr(0, name.find('.'))));
    static constexpr std::array<std::string_view, 6> devices = {"CON", "PRN",    "AUX",
                                                                "NUL", "CONIN$", "CONOUT$"};
    if (std::ranges::find(devices, stem) != devices.end())
        return true;
    if (!stem.starts_with("COM") && !stem.starts_with("LPT"))
        return false;
    // The serial and printer ports count up to 9, the first three also in superscript digits.
    const std::string_view port = std::string_view(stem).substr(3);
    static constexpr std::array<std::string_view, 3> superscripts = {"\u00B9", "\u00B2", "\u00B3"};
    return (port.size() == 1 && port.front() >= '1' && port.front() <= '9') ||
           std::ranges::find(superscripts, port) != superscripts.end();
}

bool holdsControlCharacter(std::string_view text) {
    return std::ranges::any_of(text, isControlCharacter);
}

std::string withoutControlCharacters(std::string text) {
    std::ranges::replace_if(text, isControlCharacter, '?');
    return text;
}

} // namespace orvista
