#include "items/CountedTexts.h"

#include "model/Numbers.h"

#include <cstdint>

namespace orvista {

namespace {

/// Digits of the greatest length, and the colon.
constexpr std::size_t longestNumber = 21;

} // namespace

void CountedTextWriter::add(std::string_view text) {
    bytes_ += decimalText(text.size());
    bytes_ += ':';
    bytes_ += text;
}

void CountedTextWriter::add(std::size_t number) {
    add(decimalText(number));
}

std::string_view CountedTextReader::text() {
    std::size_t length = 0;
    const std::size_t digits = rest_.substr(0, longestNumber).find(':');
    if (digits == std::string_view::npos || !isWhole(rest_.substr(0, digits), length) ||
        length > rest_.size() - digits - 1)
        return fail();
    const std::string_view text = rest_.substr(digits + 1, length);
    rest_.remove_prefix(digits + 1 + length);
    return text;
}

std::string_view CountedTextReader::fail() {
    failed_ = true;
    rest_ = {};
    return {};
}

} // namespace orvista
