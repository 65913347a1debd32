#pragma once

#include <string>
#include <string_view>

/// Names of files and folders that are to hold on every platform. Texts are UTF-8.
namespace orvista {

/// Both separators, and the colon, which names a drive or a hidden stream on Windows.
inline constexpr std::string_view refusedInNames = "/\\:";
/// What Windows refuses besides.
inline constexpr std::string_view refusedOnWindows = "*?\"<>|";

/// Names under which Windows knows devices, with any extension and in any case: CON, NUL, COM1 ...
bool isReservedOnWindows(std::string_view name);

/// C0 controls and DEL.
bool holdsControlCharacter(std::string_view text);
/// With a "?" for each of them: names and what is said of them stay on one line and leave terminals alone.
std::string withoutControlCharacters(std::string text);

} // namespace orvista
