#include "sheets/Markup.h"

namespace orvista {

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
            markup += character;
        }
    }
    return markup;
}

} // namespace orvista
