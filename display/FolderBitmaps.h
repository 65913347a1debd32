#pragma once

#include "display/BitmapProvider.h"
#include "model/FileStamp.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// The bitmaps that lie in a folder: regular files, and links to them where they are followed. Each is read
/// once, and again when its size or its time changes; while the file stays as it is, so does the image. The
/// folder is listed when a name is not there as it is written, and again when the folder changes: scripts may
/// name thousands of files that are not there.
class FolderBitmaps final : public BitmapProvider {
public:
    enum class Links { Followed, LeftOut };

    /// \param folder UTF-8
    explicit FolderBitmaps(const std::string& folder, Links links = Links::Followed);
    FoundBitmap bitmap(std::string_view name) const override;
    std::vector<std::string> names() const override;

private:
    using Time = std::filesystem::file_time_type;

    /// A file as it was when it was read.
    struct File {
        std::optional<FileStamp> stamp;
        /// Whether a later change is sure to show in the time: clocks of file systems are coarse.
        bool isSettled = false;
        FoundBitmap content;
    };
    /// The folder as it was when it was listed.
    struct Listing {
        Time changed;
        bool isSettled = false;
        std::chrono::steady_clock::time_point made;
        std::map<std::string, std::string> names; ///< Windows-1252, by their lower case
    };

    const FoundBitmap& read(const std::string& name, const std::filesystem::path& path) const;
    std::optional<std::string> nameInAnyCase(std::string_view name) const;
    static bool isCurrent(const Listing& listing);
    void list(Time changed) const;
    std::filesystem::path pathOf(std::string_view name) const;
    bool isFile(const std::filesystem::path& path) const;

    std::filesystem::path folder_;
    Links links_;
    mutable std::map<std::string, File> files_; ///< by their names on disk
    mutable std::optional<Listing> listing_;
};

} // namespace orvista
