#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The texts of the file service: commands, file names, replies. All of it is bytes; names are Windows-1252,
/// the device's encoding.
namespace orvista {

/// Longest command line that is taken, and with it the longest name.
inline constexpr std::size_t longestFtpLine = 1024;
/// Largest file the device stores or hands out.
inline constexpr std::size_t largestDeviceFile = std::size_t{64} * 1024 * 1024;

struct FtpCommand {
    std::string verb;     ///< in upper case; empty for a line that is not a command
    std::string argument; ///< everything after the one blank after the verb, as it stands
    bool operator==(const FtpCommand&) const = default;
};

/// \param line without its line end
FtpCommand parseFtpCommand(std::string_view line);

/// The bare name of a file of the device's one folder; a "/" or "./" before it is dropped. Nothing for what
/// could lie elsewhere or could not be kept: other separators, a drive, control characters, a leading dot,
/// an empty or overlong name.
std::optional<std::string> deviceFileName(std::string_view argument);

/// True for the one folder there is: "", "/", "." and the like.
bool namesRootFolder(std::string_view argument);

/// A command in words, for the log.
std::string describeFtpCommand(const FtpCommand& command);

/// A line of a listing.
struct ListedFile {
    std::string name;
    std::uint64_t size = 0;
    std::int64_t modified = 0; ///< seconds since 1970, UTC
};
/// "-rw-r--r-- 1 admin admin 81 Jan 31 2026 modbus.adr" and CR LF.
std::string longListLine(const ListedFile& file);
/// "type=file;size=81;modify=20260131120000; modbus.adr" and CR LF.
std::string factListLine(const ListedFile& file);
/// "20260131120000", in UTC.
std::string ftpTime(std::int64_t seconds);

/// "227 Entering Passive Mode (127,0,0,1,p1,p2)."
std::string passiveReply(std::uint32_t ipv4Address, std::uint16_t port);
/// "229 Entering Extended Passive Mode (|||port|)"
std::string extendedPassiveReply(std::uint16_t port);

} // namespace orvista
