#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace orvista {

/// What distinguishes a file that was written again from the one that was there.
struct FileStamp {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type changed;
    bool operator==(const FileStamp&) const = default;
};

/// Nothing when there is no file, or it cannot be asked.
std::optional<FileStamp> fileStamp(const std::filesystem::path& file);

} // namespace orvista
