#include "sheets/Markup.h"

namespace orvista {

namespace {

bool isUnwritable(char character) {
    const bool isWhite = character == '\t' || character == '\n' || character == '\r';
    return (static_cast<unsigned char>(character) < ' ' && !isWhite) || character == '\x7F';
}

} // namespace

std::string escapedForMarkup(std::string_view text) {
    std::string markup;
    for (const char character : text) {
        switch (character) {
        case '&':
            markup += "&amp;";
            break;
        case '<':
            markup += "&lt;";
            break;
        case '>':
            markup += "&gt;";
            break;
        case '"':
            markup += "&quot;";
            break;
        default:
            // Neither HTML nor XML has other control characters.
            markup += isUnwritable(character) ? '?' : character;
        }
    }
    return markup;
}

} // namespace orvista
