#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The device's character set. The model's texts are bytes in this encoding; paths and messages to the user
/// are UTF-8. All 256 bytes stand for a character: the five that Windows-1252 leaves undefined map to the
/// C1 control of the same code.
namespace orvista {

char32_t windows1252CodePoint(unsigned char byte);
/// The byte of a character, or nothing when the encoding does not have it.
std::optional<unsigned char> windows1252Byte(char32_t codePoint);

/// The small letter of a capital one, accented ones included; every other byte as it is.
unsigned char lowerWindows1252(unsigned char byte);

std::string utf8FromWindows1252(std::string_view bytes);
/// Nothing when `utf8` is not well formed or holds a character that the encoding does not have.
std::optional<std::string> windows1252FromUtf8(std::string_view utf8);
/// The first character of a UTF-8 text that the encoding does not have; empty when it has all of them.
std::string_view foreignCharacter(std::string_view utf8);

} // namespace orvista
