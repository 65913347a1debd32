#include "exchange/WholeFile.h"

#include "model/Files.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace orvista {

namespace {

namespace fs = std::filesystem;

/// A name beside the file that is not taken.
fs::path freeNameBeside(const fs::path& file) {
    std::error_code error;
    for (int number = 1;; ++number) {
        fs::path name = file;
        name += ".new" + std::to_string(number);
        if (!fs::exists(fs::symlink_status(name, error)))
            return name;
    }
}

/// Renaming needs no right to the file itself; a write-protected one must stay as it is.
bool isWritable(const fs::path& file) {
    return std::fstream(file, std::ios::in | std::ios::out).is_open();
}

/// The file a chain of links leads to, also where it is not there yet.
fs::path behindLinks(fs::path file) {
    constexpr int longestChain = 40; // as the system allows
    std::error_code error;
    for (int links = 0; links < longestChain && fs::is_symlink(fs::symlink_status(file, error)); ++links)
        file = file.parent_path() / fs::read_symlink(file, error);
    return file;
}

void writeAll(const fs::path& file, std::string_view bytes) {
    FileSink sink(utf8Path(file));
    sink.write(bytes);
    sink.close();
}

} // namespace

void writeWholeFile(const std::string& path, std::string_view bytes) {
    std::error_code error;
    const fs::path file = behindLinks(systemPath(path));
    const fs::file_status old = fs::status(file, error);
    if (fs::exists(old) && !fs::is_regular_file(old))
        return writeAll(file, bytes);
    if (fs::exists(old) && !isWritable(file))
        throw OpenFailure(std::make_error_code(std::errc::permission_denied));
    const fs::path fresh = freeNameBeside(file);
    try {
        writeAll(fresh, bytes);
        if (fs::exists(old))
            fs::permissions(fresh, old.permissions(), error);
        fs::rename(fresh, file, error);
        if (error)
            throw WriteFailure(error);
    } catch (const std::system_error&) {
        fs::remove(fresh, error);
        throw;
    }
}

} // namespace orvista
