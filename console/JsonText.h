#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

/// JSON as all commands write it, in UTF-8; bytes that are none become U+FFFD.
namespace orvista::console {

/// "version" of every document: which release of the program wrote it.
inline constexpr std::string_view programRelease = ORVISTA_RELEASE;

/// Indented by two blanks, with a line end.
std::string jsonText(const nlohmann::ordered_json& document);
/// On one line, with its end.
std::string jsonLine(const nlohmann::ordered_json& document);

} // namespace orvista::console
