#include "items/CheckedTexts.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

namespace orvista {

namespace {

constexpr std::size_t checksumDigits = 16;

std::uint64_t checksum(std::string_view bytes) {
    // The offset basis and the prime of FNV-1a for 64 bits.
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        sum *= 0x100000001b3;
    }
    return sum;
}

std::string checksumText(std::string_view bytes) {
    std::array<char, checksumDigits> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), checksum(bytes), 16);
    const std::string text(digits.data(), written.ptr);
    return std::string(checksumDigits - text.size(), '0') + text;
}

/// What stands in front of these texts.
std::string checkedHead(std::string_view firstLine, std::string_view texts) {
    std::string head(firstLine);
    head += checksumText(texts);
    head += '\n';
    return head;
}

} // namespace

std::string checkedTexts(std::string_view firstLine, std::string_view texts) {
    std::string bytes = checkedHead(firstLine, texts);
    bytes += texts;
    return bytes;
}

std::optional<std::string_view> textsChecked(std::string_view firstLine, std::string_view bytes) {
    const std::size_t head = firstLine.size() + checksumDigits + 1;
    if (bytes.size() < head || bytes.substr(0, head) != checkedHead(firstLine, bytes.substr(head)))
        return std::nullopt;
    return bytes.substr(head);
}

} // namespace orvista
