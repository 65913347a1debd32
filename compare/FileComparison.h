#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// Files byte for byte. Paths are UTF-8.
namespace orvista {

struct FileDifference {
    std::uint64_t sizeBefore = 0; ///< in bytes
    std::uint64_t sizeAfter = 0;
    std::uint64_t firstOffset = 0; ///< of the bytes that differ, from 0
    bool operator==(const FileDifference&) const = default;
};

/// Nothing where both have the same bytes.
/// \throws std::system_error, whose text names the path, when a file cannot be read; here and below
std::optional<FileDifference> compareFiles(const std::string& before, const std::string& after);
std::uint64_t sizeOfFile(const std::string& path);

} // namespace orvista
