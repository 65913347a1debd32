#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

/// A display on the network as people name it: NAME, NAME:PORT, [IPv6] or [IPv6]:PORT.
namespace orvista {

/// What a display is asked for, and where it listens for that.
struct DisplayService {
    std::uint16_t port;
    std::uint16_t highestPort;
};

/// The file transfer takes ports as 16-bit signed numbers.
inline constexpr DisplayService fileTransfer{7000, 32767};
inline constexpr DisplayService modbusTcp{502, 65535};

/// Text that names no display; `what()` is a sentence that begins with the text.
class BadDisplayAddress : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

struct DisplayAddress {
    std::string host; ///< a name or a numeric address as typed, without brackets; UTF-8
    std::uint16_t port = 0;
    bool operator==(const DisplayAddress&) const = default;

    /// The form that displayAddress() reads: "10.0.0.5:502", "[::1]:502".
    std::string text() const;
};

/// Reads text as typed; without a port it is the service's own.
/// \throws BadDisplayAddress
DisplayAddress displayAddress(std::string_view text, DisplayService service);

/// Reads digits alone, 1 to the service's highest.
/// \throws BadDisplayAddress
std::uint16_t displayPort(std::string_view digits, DisplayService service);

} // namespace orvista
