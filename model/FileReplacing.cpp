#include "model/FileReplacing.h"

#include "model/Files.h"
#include "model/SystemFile.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <optional>

namespace orvista {

namespace {

namespace fs = std::filesystem;

struct Target {
    fs::path path;
    fs::file_type kind;
};

/// The file that a link leads to, also where there is none yet.
/// \throws OpenFailure
Target behindLinks(fs::path path) {
    constexpr int mostLinks = 40; // as the system's own limit
    for (int i = 0; i <= mostLinks; ++i) {
        const fs::file_type kind = kindOf(path);
        if (kind != fs::file_type::symlink)
            return {path, kind};
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error)
            throw OpenFailure(error);
        path = path.parent_path() / target; // a target that is absolute stands alone
    }
    throw OpenFailure(std::make_error_code(std::errc::too_many_symbolic_link_levels));
}

void writeAndSync(SystemFile& file, std::string_view bytes) {
    file.write(bytes);
    file.sync();
    file.close();
}

/// Devices have nothing that could be lost.
void writeDevice(const fs::path& path, std::string_view bytes) {
    SystemFile device(path, SystemFile::Mode::Existing);
    writeAndSync(device, bytes);
}

void overwrite(const fs::path& path, std::string_view bytes) {
    SystemFile file(path, SystemFile::Mode::Existing);
    file.write(bytes);
    file.truncate(bytes.size());
    file.sync();
    file.close();
}

std::optional<std::string> wholeFile(const fs::path& path) {
    try {
        FileSource source(utf8Path(path));
        std::string bytes;
        std::string part(std::size_t{1} << 16, '\0');
        while (const std::size_t count = source.read(part.data(), part.size()))
            bytes.append(part, 0, count);
        return bytes;
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

void writeInPlace(const fs::path& path, std::string_view bytes) {
    // The old bytes have their place on the disk, which is never given up: they can be put back on a full
    // one.
    const auto old = wholeFile(path);
    try {
        overwrite(path, bytes);
    } catch (const WriteFailure&) {
        if (old) {
            try {
                overwrite(path, *old);
            } catch (const std::system_error&) {
                // Nothing more can be done; the first failure is told.
            }
        }
        throw;
    }
}

/// A file under a name that did not exist; gone again unless it was put in its place.
class NewFile {
public:
    /// \throws OpenFailure
    explicit NewFile(const fs::path& target) {
        const fs::path folder = target.parent_path();
        if (!create(folder, target.filename()) && !create(folder, "orvista"))
            throw OpenFailure(std::make_error_code(std::errc::file_exists));
    }
    ~NewFile() {
        file_.reset();
        std::error_code ignored;
        if (!path_.empty())
            fs::remove(path_, ignored);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    SystemFile& file() { return *file_; }
    void putInPlaceOf(const fs::path& target) {
        renameOver(path_, target);
        path_.clear();
    }

private:
    /// False when the name is too long to add anything to it, or its variants are all taken.
    bool create(const fs::path& folder, const fs::path& name) {
        for (int attempt = 1; attempt <= 100; ++attempt) {
            fs::path path = folder / name;
            path += attempt == 1 ? ".new" : ".new" + std::to_string(attempt);
            try {
                file_.emplace(path, SystemFile::Mode::New);
                path_ = path;
                return true;
            } catch (const OpenFailure& failure) {
                if (failure.code() == std::errc::filename_too_long)
                    return false;
                if (failure.code() != std::errc::file_exists)
                    throw;
            }
        }
        return false;
    }

    fs::path path_;
    std::optional<SystemFile> file_;
};

bool isForbidden(const OpenFailure& failure) {
    return failure.code() == std::errc::permission_denied ||
           failure.code() == std::errc::operation_not_permitted;
}

void replaceRegularFile(const fs::path& path, std::string_view bytes, bool isThere) {
    std::optional<NewFile> created;
    try {
        created.emplace(path);
    } catch (const OpenFailure& failure) {
        if (!isThere || !isForbidden(failure))
            throw;
        writeInPlace(path, bytes);
        return;
    }
    if (isThere)
        created->file().takePermissionsOf(path);
    writeAndSync(created->file(), bytes);
    created->putInPlaceOf(path);
    syncFolder(path.has_parent_path() ? path.parent_path() : ".");
}

void expectWritable(const fs::path& file) {
    SystemFile(file, SystemFile::Mode::Existing).close();
}

} // namespace

bool leaveOtherNames(const fs::path& file) {
    if (kindOf(file) != fs::file_type::regular || nameCount(file) == 1)
        return true;
    expectWritable(file);
    try {
        NewFile created(file);
        created.file().takePermissionsOf(file);
        created.file().close();
        created.putInPlaceOf(file);
        return true;
    } catch (const OpenFailure& failure) {
        if (!isForbidden(failure))
            throw;
        return false;
    }
}

void replaceFile(const std::string& path, std::string_view bytes) {
    const auto [file, kind] = behindLinks(systemPath(path));
    switch (kind) {
    case fs::file_type::not_found:
        return replaceRegularFile(file, bytes, false);
    case fs::file_type::regular:
        // Replacing needs no right to the file itself; what is write-protected must stay so.
        expectWritable(file);
        return replaceRegularFile(file, bytes, true);
    case fs::file_type::character:
    case fs::file_type::block:
        return writeDevice(file, bytes);
    case fs::file_type::directory:
        throw OpenFailure(std::make_error_code(std::errc::is_a_directory));
    default:
        throw OpenFailure(std::make_error_code(std::errc::not_supported));
    }
}

} // namespace orvista
