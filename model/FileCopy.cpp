#include "model/FileCopy.h"

#include "model/Files.h"
#include "model/SystemFile.h"
#include "model/SystemPath.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <system_error>

namespace orvista {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t pieceSize = std::size_t{1} << 16;

void fillWith(SystemFile& copy, ByteSource& source) {
    std::array<char, pieceSize> bytes{};
    while (const std::size_t count = source.read(bytes.data(), bytes.size()))
        copy.write({bytes.data(), count});
    copy.close();
}

void fillNewFile(const fs::path& target, ByteSource& source) {
    std::optional<SystemFile> copy(std::in_place, target, SystemFile::Mode::New);
    try {
        fillWith(*copy, source);
    } catch (const std::system_error&) {
        copy.reset(); // some systems remove no file that is open
        std::error_code ignored;
        fs::remove(target, ignored);
        throw;
    }
}

} // namespace

void copyFile(const std::string& source, const std::string& target) {
    // std::filesystem::copy_file tells of a full disk as of a broken one, and leaves half a file there.
    const fs::path from = systemPath(source);
    const fs::path to = systemPath(target);
    try {
        FileSource bytes(source);
        const fs::perms permissions = fs::status(from).permissions();
        fillNewFile(to, bytes);
        std::error_code ignored; // of disks that know no permissions
        fs::permissions(to, permissions, ignored);
    } catch (const std::system_error& failure) {
        throw fs::filesystem_error("cannot copy file", from, to, failure.code());
    }
}

} // namespace orvista
