#pragma once

#include <chrono>
#include <string>
#include <string_view>

/// Why a transfer failed, in words: the same for windows and commands. UTF-8.
namespace orvista {

inline constexpr std::string_view causeHungUp = "hung up";
inline constexpr std::string_view causeUnknownHost = "unknown host";
inline constexpr std::string_view causeNoFileService = "no file service answers there";
inline constexpr std::string_view causeTooLong = "it is too long";

/// "no answer within 10 s"
std::string silenceCause(std::chrono::seconds timeout);
/// "connection refused", or the system's own words for another error of a connection.
/// \param error the system's number, 0 where it is not known
std::string connectionCause(int error);
/// What the display said last, from its number on: at most 80 characters, "?" for control characters.
/// \param line bytes as they came, without the line end; UTF-8, else Windows-1252
std::string replyCause(std::string_view line);

/// "stdmsg.ilm was not taken: 452 disk full"; the text alone where the cause is empty.
std::string withCause(std::string text, std::string_view cause);

} // namespace orvista
