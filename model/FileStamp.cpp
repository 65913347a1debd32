#include "model/FileStamp.h"

#include <system_error>

namespace orvista {

std::optional<FileStamp> fileStamp(const std::filesystem::path& file) {
    namespace fs = std::filesystem;
    std::error_code sizeError;
    std::error_code timeError;
    const FileStamp stamp{fs::file_size(file, sizeError), fs::last_write_time(file, timeError)};
    return sizeError || timeError ? std::nullopt : std::optional(stamp);
}

} // namespace orvista
