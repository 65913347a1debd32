#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Files of a project's folder and of a display, byte for byte.
namespace orvista {

struct NamedFile {
    std::string name; ///< UTF-8
    std::string path; ///< where its bytes are, UTF-8
};

/// \param folder UTF-8
std::vector<NamedFile> filesIn(const std::string& folder, const std::vector<std::string>& names);

/// The folder's bitmaps, as bitmapsOfFolder() finds them.
std::vector<NamedFile> bitmapsIn(const std::string& folder);

struct FileDifference {
    std::string name;                         ///< as the first side spells it, where it has the file
    std::optional<std::uint64_t> sizeBefore;  ///< in bytes; nothing where the first side has no such file
    std::optional<std::uint64_t> sizeAfter;   ///< the same of the second side
    std::optional<std::uint64_t> firstOffset; ///< of the bytes that differ, from 0, where both have the file
    bool operator==(const FileDifference&) const = default;
};

/// Nothing where both have the same bytes.
/// \throws std::system_error, whose text names the path, when a file cannot be read; here and below
std::optional<FileDifference> compareBytes(const NamedFile& before, const NamedFile& after);
std::uint64_t sizeOfFile(const std::string& path);

/// What differs, by the names' order. The display knows names in any ASCII case; of names of one side that
/// differ in case only the last one counts, which arrives last.
/// \throws std::system_error, whose text names the path, when a file cannot be read
std::vector<FileDifference> compareFiles(const std::vector<NamedFile>& before,
                                         const std::vector<NamedFile>& after);

} // namespace orvista
