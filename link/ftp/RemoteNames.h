#pragma once

#include "model/PathRules.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// File names between this machine (UTF-8) and the device (Windows-1252 bytes).
namespace orvista {

/// The device's name of a local file, or nothing when the encoding does not have it or when a control
/// character would break the command line it is sent in.
std::optional<std::string> remoteFileName(std::string_view localName);

/// The local name of a file that the other end listed, or nothing when it must not be written: the list is
/// trusted with nothing, and a name may not lead out of the folder, reach a device of the platform or hide
/// itself.
std::optional<std::string> localFileName(std::string_view remoteName, const PathRules& paths);

/// A list of names, one a line, as it arrives piece by piece. More than `nameLimit` names, or more bytes than
/// that many names can have, make it fail.
class RemoteListing {
public:
    static constexpr std::size_t nameLimit = 10'000;
    static constexpr std::size_t byteLimit = nameLimit * 512;

    /// False when the list became too long; what comes after that is ignored.
    bool append(std::string_view piece);
    /// Takes a last line without an end. False when the list was too long.
    bool finish();

    /// Without empty lines and repetitions, in byte order.
    const std::vector<std::string>& names() const { return names_; }
    /// The name that equals `name` but for case: its lower-case form first, else any; else `name` itself.
    std::string variantOf(std::string_view name) const;
    /// Whether it is one of the names, in this case.
    bool has(std::string_view name) const;

private:
    bool endLine();

    std::vector<std::string> names_;
    std::string line_;
    std::size_t byteCount_ = 0;
    bool tooLong_ = false;
};

} // namespace orvista
