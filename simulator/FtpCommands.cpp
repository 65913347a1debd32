#include "simulator/FtpCommands.h"

#include "model/Numbers.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace orvista {

namespace {

constexpr std::size_t longestFileName = 200;

bool isControl(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
}

bool isLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

std::string twoDigits(std::int64_t value) {
    return (value < 10 ? "0" : "") + decimalText(value);
}

struct UtcTime {
    std::int64_t year;
    unsigned month;
    unsigned day;
    std::int64_t secondOfDay;
};

UtcTime utcTime(std::int64_t seconds) {
    // Years of more than four digits have no place in a listing.
    constexpr std::int64_t lastSecond = 253402300799;
    const std::chrono::sys_seconds time{
        std::chrono::seconds(std::clamp<std::int64_t>(seconds, 0, lastSecond))};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    return {static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
            static_cast<unsigned>(date.day()), (time - day).count()};
}

using Words = std::pair<std::string_view, std::string_view>;

// What a command does; the argument follows.
constexpr std::array<Words, 22> verbsInWords{{{"USER", "Log in as"},
                                              {"PASS", "Password"},
                                              {"QUIT", "Log out"},
                                              {"PASV", "Passive mode"},
                                              {"EPSV", "Extended passive mode"},
                                              {"TYPE", "Transfer type"},
                                              {"PWD", "Which folder?"},
                                              {"CWD", "Change to folder"},
                                              {"CDUP", "Change to the folder above"},
                                              {"LIST", "List files"},
                                              {"NLST", "List names"},
                                              {"MLSD", "List files with facts"},
                                              {"SIZE", "Size of"},
                                              {"MDTM", "Time of"},
                                              {"RETR", "Fetch"},
                                              {"STOR", "Store"},
                                              {"DELE", "Delete"},
                                              {"NOOP", "Nothing to do"},
                                              {"SYST", "Which system?"},
                                              {"FEAT", "Which features?"},
                                              {"SITE", "Device command"},
                                              {"ABOR", "Abort"}}};

} // namespace

FtpCommand parseFtpCommand(std::string_view line) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    const std::string_view verb = line.substr(0, blank);
    if (verb.empty() || verb.size() > 8 || !std::all_of(verb.begin(), verb.end(), isLetter))
        return {};
    return {upperAscii(verb), std::string(blank < line.size() ? line.substr(blank + 1) : std::string_view())};
}

std::optional<std::string> deviceFileName(std::string_view argument) {
    if (argument.substr(0, 2) == "./")
        argument.remove_prefix(2);
    else if (argument.substr(0, 1) == "/")
        argument.remove_prefix(1);
    if (argument.empty() || argument.size() > longestFileName || argument.front() == '.' ||
        argument.find_first_of("/\\:") != std::string_view::npos ||
        std::any_of(argument.begin(), argument.end(), isControl))
        return std::nullopt;
    return std::string(argument);
}

bool namesRootFolder(std::string_view argument) {
    return argument.empty() || argument == "/" || argument == "." || argument == "./" || argument == "/.";
}

std::string describeFtpCommand(const FtpCommand& command) {
    if (command.verb.empty())
        return "Not a command";
    const auto* const known = std::find_if(verbsInWords.begin(), verbsInWords.end(),
                                           [&](const Words& words) { return words.first == command.verb; });
    if (known == verbsInWords.end())
        return command.verb + ", which is not known";
    std::string words(known->second);
    if (!command.argument.empty() && command.verb != "PASS")
        words += " " + command.argument;
    return words;
}

std::string longListLine(const ListedFile& file) {
    static constexpr std::array<std::string_view, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const UtcTime time = utcTime(file.modified);
    return "-rw-r--r-- 1 admin admin " + decimalText(file.size) + " " + std::string(months[time.month - 1]) +
           " " + twoDigits(time.day) + " " + decimalText(time.year) + " " + file.name + "\r\n";
}

std::string factListLine(const ListedFile& file) {
    return "type=file;size=" + decimalText(file.size) + ";modify=" + ftpTime(file.modified) + "; " +
           file.name + "\r\n";
}

std::string ftpTime(std::int64_t seconds) {
    const UtcTime time = utcTime(seconds);
    return decimalText(time.year) + twoDigits(time.month) + twoDigits(time.day) +
           twoDigits(time.secondOfDay / 3600) + twoDigits(time.secondOfDay / 60 % 60) +
           twoDigits(time.secondOfDay % 60);
}

std::string passiveReply(std::uint32_t ipv4Address, std::uint16_t port) {
    std::string numbers;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        numbers += decimalText(ipv4Address >> shift & 0xFFU) + ",";
    numbers += decimalText(port / 256) + "," + decimalText(port % 256);
    return "227 Entering Passive Mode (" + numbers + ").";
}

std::string extendedPassiveReply(std::uint16_t port) {
    return "229 Entering Extended Passive Mode (|||" + decimalText(port) + "|)";
}

} // namespace orvista
