#include "link/DisplayAddress.h"

#include "model/FileNames.h"
#include "model/Numbers.h"
#include "model/Text.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace orvista {

namespace {

/// The longest name that the name service knows.
constexpr std::size_t longestHostName = 253;

constexpr std::string_view decimalDigits = "0123456789";
constexpr std::string_view hexadecimalLetters = "abcdefABCDEF";

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isNameCharacter(char c) {
    const bool isBeyondAscii = static_cast<unsigned char>(c) >= 0x80; // names in other scripts
    return isLetter(c) || isBeyondAscii || decimalDigits.find(c) != std::string_view::npos || c == '-' ||
           c == '.' || c == '_';
}

/// Nothing that a command line takes for an option, or that means something in a path or a URL.
bool isHostName(std::string_view name) {
    return !name.empty() && name.size() <= longestHostName && name.front() != '-' &&
           std::ranges::all_of(name, isNameCharacter);
}

/// An IPv6 address, with "%" and the name of an interface where it needs one. Whether its groups make sense
/// is left to the system.
bool isBracketedHost(std::string_view host) {
    const std::string_view address = host.substr(0, host.find('%'));
    const bool hasZone = address.size() < host.size();
    return std::ranges::count(address, ':') >= 2 && address.size() <= longestHostName &&
           std::ranges::all_of(address,
                               [](char c) {
                                   return decimalDigits.find(c) != std::string_view::npos || c == ':' ||
                                          c == '.' || hexadecimalLetters.find(c) != std::string_view::npos;
                               }) &&
           (!hasZone || isHostName(host.substr(address.size() + 1)));
}

/// A sentence about the text, which may hold anything.
[[noreturn]] void refuseAddress(std::string_view text, std::string_view reason) {
    std::string sentence(text.empty() ? std::string_view("an empty text") : text);
    throw BadDisplayAddress(withoutControlCharacters(std::move(sentence)).append(" ").append(reason));
}

/// Host and port as they stand in the text; the port with its colon, or empty.
struct AddressParts {
    std::string_view host;
    std::string_view port;
};

AddressParts bracketedParts(std::string_view text) {
    const std::size_t end = text.find(']');
    if (end == std::string_view::npos || !isBracketedHost(text.substr(1, end - 1)))
        refuseAddress(text, "is not an IPv6 address in brackets, such as [fe80::5]:502");
    return {text.substr(1, end - 1), text.substr(end + 1)};
}

AddressParts namedParts(std::string_view text) {
    if (text.find("://") != std::string_view::npos)
        refuseAddress(text, "is the address of a page, not of a display: NAME, NAME:PORT or [IPv6]:PORT");
    if (std::ranges::count(text, ':') > 1)
        refuseAddress(text, "is not a display's address; an IPv6 address stands in brackets");
    const std::string_view host = text.substr(0, text.find(':'));
    if (!isHostName(host))
        refuseAddress(text, "is not a display's name or address");
    return {host, text.substr(host.size())};
}

} // namespace

std::string DisplayAddress::text() const {
    const bool needsBrackets = host.find(':') != std::string::npos;
    return (needsBrackets ? "[" + host + "]" : host) + ":" + decimalText(port);
}

DisplayAddress displayAddress(std::string_view text, DisplayService service) {
    const AddressParts parts = text.starts_with('[') ? bracketedParts(text) : namedParts(text);
    if (parts.port.empty())
        return {std::string(parts.host), service.port};
    if (parts.port.front() != ':')
        refuseAddress(text, "goes on after the brackets without a colon");
    return {std::string(parts.host), displayPort(parts.port.substr(1), service)};
}

std::uint16_t displayPort(std::string_view text, DisplayService service) {
    std::uint16_t port = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), port);
    if (!GenenalModule::IsAllDigits(text) || parsed.ec != std::errc{} || port == 0 ||
        port > service.highestPort)
        refuseAddress(text, "is not a port from 1 to " + decimalText(service.highestPort));
    return port;
}

} // namespace orvista
