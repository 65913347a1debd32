#include "model/SystemFile.h"

#include "model/Bytes.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <sys/file.h>
#include <unistd.h>
#endif

namespace orvista {

namespace {

namespace fs = std::filesystem;

template <typename Call>
auto again(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

/// What there is nothing to wait for says so: devices, some network folders.
bool knowsNoSync() {
    return errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
}

#ifdef _WIN32

/// The C library's own way looks for the end first, where another program may write meanwhile.
int openForAppending(const fs::path& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE)
        return _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_APPEND | _O_BINARY);
    errno = GetLastError() == ERROR_ACCESS_DENIED ? EACCES : ENOENT;
    return -1;
}

int openForWriting(const fs::path& path, SystemFile::Mode mode) {
    if (mode == SystemFile::Mode::Append)
        return openForAppending(path);
    const int creation = mode == SystemFile::Mode::Truncate ? _O_CREAT | _O_TRUNC
                         : mode == SystemFile::Mode::New    ? _O_CREAT | _O_EXCL
                                                            : 0;
    return _wopen(path.c_str(), _O_WRONLY | _O_BINARY | _O_NOINHERIT | creation, _S_IREAD | _S_IWRITE);
}

auto writeSome(int file, std::string_view bytes) {
    constexpr std::size_t most = std::size_t{1} << 30; // counts are int here
    return _write(file, bytes.data(), static_cast<unsigned>(std::min(bytes.size(), most)));
}

int syncFile(int file) {
    return _commit(file); // FlushFileBuffers
}

int setSize(int file, std::uint64_t size) {
    return _chsize_s(file, static_cast<std::int64_t>(size)) == 0 ? 0 : -1;
}

int closeFile(int file) {
    return _close(file);
}

bool lockFile(int file) {
    // A byte that no file has, since the system lets nobody else read a byte that is locked.
    OVERLAPPED at{};
    at.OffsetHigh = 1U << 30;
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(file));
    return LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &at) != 0 ||
           GetLastError() != ERROR_LOCK_VIOLATION;
}

#else

int openForWriting(const fs::path& path, SystemFile::Mode mode) {
    const int creation = mode == SystemFile::Mode::Truncate ? O_CREAT | O_TRUNC
                         : mode == SystemFile::Mode::New    ? O_CREAT | O_EXCL
                         : mode == SystemFile::Mode::Append ? O_CREAT | O_APPEND
                                                            : 0;
    return ::open(path.c_str(), O_WRONLY | O_CLOEXEC | creation, 0666);
}

auto writeSome(int file, std::string_view bytes) {
    return ::write(file, bytes.data(), bytes.size());
}

int syncFile(int file) {
    return ::fsync(file);
}

int setSize(int file, std::uint64_t size) {
    return ::ftruncate(file, static_cast<off_t>(size));
}

int closeFile(int file) {
    return ::close(file);
}

bool lockFile(int file) {
    return again([file] { return ::flock(file, LOCK_EX | LOCK_NB); }) == 0 || errno != EWOULDBLOCK;
}

#endif

} // namespace

std::error_code systemError() {
    return {errno, std::generic_category()};
}

SystemFile::SystemFile(const fs::path& path, Mode mode)
    : file_(again([&] { return openForWriting(path, mode); })) {
    if (file_ == -1)
        throw OpenFailure(systemError());
}

SystemFile::~SystemFile() {
    if (file_ != -1)
        closeFile(file_);
}

void SystemFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = again([&] { return writeSome(file_, bytes); });
        if (count == -1)
            throw WriteFailure(systemError());
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void SystemFile::truncate(std::uint64_t size) {
    if (again([&] { return setSize(file_, size); }) == -1)
        throw WriteFailure(systemError());
}

void SystemFile::sync() {
    if (again([this] { return syncFile(file_); }) == -1 && !knowsNoSync())
        throw WriteFailure(systemError());
}

void SystemFile::close() {
    const int result = closeFile(file_);
    file_ = -1; // whatever it says: a second attempt could close another file of this number
    if (result == -1 && errno != EINTR)
        throw WriteFailure(systemError());
}

fs::file_type kindOf(const fs::path& path) {
    std::error_code error;
    fs::file_type kind{};
    do
        kind = fs::symlink_status(path, error).type();
    while (kind == fs::file_type::none && error == std::errc::interrupted);
    if (kind == fs::file_type::none)
        throw OpenFailure(error);
    return kind;
}

std::uintmax_t nameCount(const fs::path& path) {
    std::error_code error;
    std::uintmax_t count = 0;
    do
        count = fs::hard_link_count(path, error);
    while (error == std::errc::interrupted);
    if (error)
        throw OpenFailure(error);
    return count;
}

bool SystemFile::lock() {
    return lockFile(file_);
}

#ifdef _WIN32

void SystemFile::takePermissionsOf(const fs::path&) {}

void renameOver(const fs::path& from, const fs::path& to) {
    // The first keeps the permissions of what is replaced, but wants something to replace.
    if (ReplaceFileW(to.c_str(), from.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) ==
            0 &&
        MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0)
        throw WriteFailure(std::error_code(static_cast<int>(GetLastError()), std::system_category()));
}

void syncFolder(const fs::path&) {
    // Names are written through with the rename.
}

#else

void SystemFile::takePermissionsOf(const fs::path& other) {
    struct stat old {};
    if (again([&] { return ::stat(other.c_str(), &old); }) == -1)
        throw WriteFailure(systemError());
    // First the owner: changing that takes some permissions away.
    [[maybe_unused]] const int onlyForSome = ::fchown(file_, old.st_uid, old.st_gid);
    if (again([&] { return ::fchmod(file_, old.st_mode & 07777); }) == -1 && errno != EPERM &&
        errno != ENOTSUP)
        throw WriteFailure(systemError());
}

void renameOver(const fs::path& from, const fs::path& to) {
    if (again([&] { return ::rename(from.c_str(), to.c_str()); }) == -1)
        throw WriteFailure(systemError());
}

void syncFolder(const fs::path& folder) {
    const int file = again([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (file == -1 && errno == EACCES)
        return;
    if (file == -1)
        throw WriteFailure(systemError());
    const bool failed = again([file] { return ::fsync(file); }) == -1 && !knowsNoSync();
    const std::error_code reason = systemError();
    ::close(file);
    if (failed)
        throw WriteFailure(reason);
}

#endif

} // namespace orvista
