#include "sheets/Base64.h"

#include <cstdint>

namespace orvista {

std::string base64(std::string_view bytes) {
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::string_view group = bytes.substr(at, 3);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i)
            bits = bits << 8U | (i < group.size() ? static_cast<std::uint8_t>(group[i]) : 0U);
        for (std::size_t i = 0; i < 4; ++i)
            text.push_back(i <= group.size() ? letters[bits >> (18U - 6U * i) & 63U] : '=');
    }
    return text;
}

} // namespace orvista
