#pragma once

#include "items/Acceptance.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// An acceptance as JSON, UTF-8:
///
///     {"version": 1,
///      "fingerprint": "0123456789ab",
///      "address": "192.168.1.103",
///      "time": "2026-11-22T03:15:00Z",
///      "name": "A. Meyer",
///      "messages": {"STDMSG3": {"result": "wrong", "remark": "the arrow points left",
///                               "time": "2026-11-22T03:16:10Z"}}}
///
/// A remark may be missing. Keys of others may stand anywhere, and are not read.
namespace orvista {

/// Longer files are not read; what is written is shorter.
inline constexpr std::size_t mostAcceptanceBytes = std::size_t{1} << 20;

struct AcceptanceReading {
    std::optional<Acceptance> acceptance;
    std::string
        fault; ///< why nothing was taken, to follow "it": "\"name\" is not a text"; empty where it was
};

AcceptanceReading readAcceptance(std::string_view bytes);
/// What readAcceptance() reads. \param acceptance with texts and times as its fields say
std::string acceptanceBytes(const Acceptance& acceptance);

/// Of a file that cannot be read, the system's reason is the fault. \param path UTF-8
AcceptanceReading readAcceptanceFile(const std::string& path);

/// What is proposed for the file's name: "PLANT-accepted.json". \param project its name, UTF-8
std::string acceptanceFileName(const std::string& project);

} // namespace orvista
