#include "model/Utf8.h"

#include <algorithm>
#include <cstdint>

namespace orvista {

namespace {

/// The range of the second unit after a lead one, and how many follow in all. It is narrower where forms
/// would be overlong, surrogates or beyond the last code point.
struct Form {
    std::size_t length;
    std::uint8_t lowest = 0x80;
    std::uint8_t highest = 0xBF;
};

Form formOf(std::uint8_t lead) {
    if (lead < 0x80)
        return {1};
    if (lead < 0xC2 || lead > 0xF4)
        return {0};
    if (lead < 0xE0)
        return {2};
    if (lead < 0xF0)
        return {3, std::uint8_t(lead == 0xE0 ? 0xA0 : 0x80), std::uint8_t(lead == 0xED ? 0x9F : 0xBF)};
    return {4, std::uint8_t(lead == 0xF0 ? 0x90 : 0x80), std::uint8_t(lead == 0xF4 ? 0x8F : 0xBF)};
}

/// How many units of the form the text begins with, the lead one among them. It is not empty.
std::size_t unitsOf(const Form& form, std::string_view text) {
    const std::size_t most = std::min(form.length, text.size());
    for (std::size_t i = 1; i < most; ++i) {
        const auto unit = static_cast<std::uint8_t>(text[i]);
        if (unit < (i == 1 ? form.lowest : 0x80) || unit > (i == 1 ? form.highest : 0xBF))
            return i;
    }
    return most;
}

} // namespace

std::size_t utf8CharacterLength(std::string_view text) {
    if (text.empty())
        return 0;
    const Form form = formOf(static_cast<std::uint8_t>(text.front()));
    return unitsOf(form, text) == form.length ? form.length : 0;
}

std::size_t utf8FaultLength(std::string_view text) {
    return std::max<std::size_t>(unitsOf(formOf(static_cast<std::uint8_t>(text.front())), text), 1);
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = utf8CharacterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

void appendUtf8(std::string& text, char32_t character) {
    const auto add = [&](char32_t unit) { text += static_cast<char>(static_cast<std::uint8_t>(unit)); };
    if (character < 0x80)
        return add(character);
    if (character < 0x800) {
        add(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            add(0xE0 | character >> 12);
        } else {
            add(0xF0 | character >> 18);
            add(0x80 | (character >> 12 & 0x3F));
        }
        add(0x80 | (character >> 6 & 0x3F));
    }
    add(0x80 | (character & 0x3F));
}

} // namespace orvista
