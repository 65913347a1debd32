#include "check/Quoted.h"

#include "model/Windows1252.h"

namespace orvista {

namespace {

constexpr std::size_t mostCharacters = 40;

bool isPrintable(unsigned char byte) {
    const char32_t codePoint = windows1252CodePoint(byte);
    return codePoint >= 0x20 && (codePoint < 0x7F || codePoint >= 0xA0);
}

} // namespace

std::string printable(std::string_view bytes) {
    std::string shown(bytes);
    for (char& character : shown)
        if (!isPrintable(static_cast<unsigned char>(character)))
            character = '?';
    return utf8FromWindows1252(shown);
}

std::string quoted(std::string_view bytes) {
    return '"' + printable(bytes.substr(0, mostCharacters)) + (bytes.size() > mostCharacters ? "…\"" : "\"");
}

} // namespace orvista
