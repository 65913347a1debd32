#pragma once

#include "model/SystemPath.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace orvista::testing {

/// A folder of its own under the system's temporary folder, gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        for (int attempt = 0; attempt < 100; ++attempt) {
            path_ = std::filesystem::temp_directory_path() / ("orvista-test-" + std::to_string(random()));
            if (std::filesystem::create_directory(path_))
                return;
        }
        throw std::runtime_error("no temporary folder could be made");
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path() const { return utf8Path(path_); }
    std::string file(const std::string& name) const { return utf8Path(path_ / systemPath(name)); }

private:
    std::filesystem::path path_;
};

inline std::string fileBytes(const std::string& path) {
    std::ifstream file(systemPath(path), std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return std::move(bytes).str();
}

inline void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream file(systemPath(path), std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write " + path);
}

} // namespace orvista::testing
