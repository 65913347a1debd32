#include "link/TransferCause.h"

#include "model/Numbers.h"
#include "model/Utf8.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <system_error>

namespace orvista {

namespace {

/// C0, DEL and C1, some of which move a terminal's cursor.
bool isControlCharacter(std::string_view character) {
    const auto first = static_cast<unsigned char>(character.front());
    if (character.size() == 1)
        return first < 0x20 || first == 0x7F;
    return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

} // namespace

std::string silenceCause(std::chrono::seconds timeout) {
    return "no answer within " + decimalText(timeout.count()) + " s";
}

std::string connectionCause(int error) {
    const std::error_code code(error, std::system_category());
    if (code == std::errc::connection_refused)
        return "connection refused";
    return error == 0 ? "no connection" : "no connection: " + code.message();
}

std::string replyCause(std::string_view line) {
    constexpr std::size_t mostCharacters = 80;
    const std::string text = isUtf8(line) ? std::string(line) : utf8FromWindows1252(line);
    std::string shown;
    std::string_view rest = text;
    for (std::size_t i = 0; i < mostCharacters && !rest.empty(); ++i) {
        const std::string_view character = rest.substr(0, utf8CharacterLength(rest));
        shown += isControlCharacter(character) ? "?" : character;
        rest.remove_prefix(character.size());
    }
    return shown;
}

std::string withCause(std::string text, std::string_view cause) {
    return cause.empty() ? text : text.append(": ").append(cause);
}

} // namespace orvista
