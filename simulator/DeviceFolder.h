#pragma once

#include "simulator/FtpCommands.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// The folder that holds the device's files. Names are Windows-1252 bytes as the scripts write them, and
/// UTF-8 on disk. Only regular files count: nothing is read or written through a link.
class DeviceFolder {
public:
    /// \param path UTF-8; must exist
    explicit DeviceFolder(std::string path) : path_(std::move(path)) {}

    const std::string& path() const { return path_; }
    /// Sorted by name; at most 10,000 files. Files that the device could not name are left out.
    std::vector<ListedFile> list() const;
    /// Nothing when there is no such file.
    std::optional<ListedFile> find(std::string_view name) const;
    /// Nothing when there is no such file, it cannot be read or is larger than the device stores.
    std::optional<std::string> read(std::string_view name) const;
    /// The file appears under its name when all of it is written; false when it could not be.
    bool store(std::string_view name, std::string_view bytes) const;
    bool remove(std::string_view name) const;

private:
    /// Nothing for a name that deviceFileName() refuses.
    std::optional<std::filesystem::path> pathOf(std::string_view name) const;

    std::string path_;
};

} // namespace orvista
