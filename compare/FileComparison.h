#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Files byte for byte.
namespace orvista {

/// A file: on the disk, or what it would hold there.
struct ComparedFile {
    std::string path;                           ///< UTF-8
    std::optional<std::string_view> bytes = {}; ///< in place of the path
};

struct FileDifference {
    std::uint64_t sizeBefore = 0; ///< in bytes
    std::uint64_t sizeAfter = 0;
    std::uint64_t firstOffset = 0; ///< of the bytes that differ, from 0
    bool operator==(const FileDifference&) const = default;
};

/// Nothing where both have the same bytes.
/// \throws std::system_error, whose text names the path, when a file cannot be read; here and below
std::optional<FileDifference> compareFiles(const ComparedFile& before, const ComparedFile& after);
std::uint64_t sizeOfFile(const ComparedFile& file);

} // namespace orvista
