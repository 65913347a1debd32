#pragma once

#include "display/FieldFormats.h"
#include "model/Item.h"
#include "model/Project.h"
#include "script/VariableUse.h"

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the messages of a project hold, in short.
namespace orvista {

struct MessageDigest {
    std::size_t pages = 0; ///< that draw something or last
    bool drawsSomething = false;
    std::string text; ///< the first one, as firstText() has it; UTF-8
    VariableUse variables;
    std::vector<std::string> bitmaps; ///< as written, each once whatever its case; UTF-8
};

MessageDigest messageDigest(std::string_view script, const FieldFormats& formats);

/// The digests of all messages, made again only of those that have changed.
class MessageDigests {
public:
    static constexpr std::size_t allBytes = std::numeric_limits<std::size_t>::max();

    MessageDigests() = default;
    explicit MessageDigests(const Project& project) { update(project); }

    /// Reads the scripts that have changed since the last time, up to the one with which they are `most`
    /// bytes or more; the rest is left for the next time. \returns true when nothing is left
    bool update(const Project& project, std::size_t most = allBytes);
    /// Null for one that was left.
    const MessageDigest* of(Item message) const {
        const auto& read = read_[messagePosition(message)];
        return read ? &read->digest : nullptr;
    }

private:
    struct Read {
        std::string script;
        MessageDigest digest;
    };
    FieldFormats formats_;
    std::array<std::optional<Read>, messageCount> read_;
};

} // namespace orvista
