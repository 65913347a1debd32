#include "model/ScratchFolder.h"

#include "model/Files.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <random>
#include <system_error>

namespace orvista {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    std::error_code error;
    const fs::path top = fs::temp_directory_path(error);
    if (error)
        throw std::system_error(error, "the folder for temporary files");
    std::random_device random;
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const fs::path folder = top / ("orvista-" + std::to_string(random()));
        if (fs::create_directory(folder, error)) {
            fs::permissions(folder, fs::perms::owner_all, error);
            path_ = utf8Path(folder);
            return;
        }
        if (error)
            throw std::system_error(error, utf8Path(top));
    }
    throw std::system_error(std::make_error_code(std::errc::file_exists), utf8Path(top));
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(systemPath(path_), ignored);
}

std::string writingFault(const std::string& folder) {
    constexpr std::size_t size = std::size_t{1} << 20;
    const std::string path = folder + "/writing-fault";
    std::string fault;
    try {
        FileSink sink(path);
        sink.write(std::string(size, '\0'));
        sink.close();
    } catch (const std::system_error& failure) {
        fault = folder + " cannot be written to: " + failure.code().message();
    }
    std::error_code ignored;
    fs::remove(systemPath(path), ignored);
    return fault;
}

} // namespace orvista
