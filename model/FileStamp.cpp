#include "model/FileStamp.h"

#include "model/Files.h"

#include <system_error>

namespace orvista {

std::optional<FileStamp> fileStamp(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code sizeError;
    std::error_code timeError;
    const fs::path file = systemPath(path);
    const FileStamp stamp{fs::file_size(file, sizeError), fs::last_write_time(file, timeError)};
    return sizeError || timeError ? std::nullopt : std::optional(stamp);
}

} // namespace orvista
