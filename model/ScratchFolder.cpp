#include "model/ScratchFolder.h"

#include "model/Files.h"

#include <filesystem>
#include <random>
#include <system_error>

namespace orvista {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    const fs::path top = fs::temp_directory_path();
    std::random_device random;
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const fs::path folder = top / ("orvista-" + std::to_string(random()));
        if (!fs::create_directory(folder))
            continue;
        fs::permissions(folder, fs::perms::owner_all);
        path_ = utf8Path(folder);
        return;
    }
    throw std::system_error(std::make_error_code(std::errc::file_exists), utf8Path(top));
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(systemPath(path_), ignored);
}

} // namespace orvista
