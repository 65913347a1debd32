#include "model/Files.h"

#include "model/SystemFile.h"
#include "model/SystemPath.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

namespace orvista {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t bufferSize = std::size_t{1} << 16;

FileHandle openFile(const fs::path& path) {
#ifdef _WIN32
    return FileHandle(_wfopen(path.c_str(), L"rb"));
#else
    return FileHandle(std::fopen(path.c_str(), "rbe"));
#endif
}

std::error_code refusal(std::errc reason) {
    return std::make_error_code(reason);
}

/// One with a name, or a device such as a terminal.
bool isPipe(fs::file_type kind) {
    return kind == fs::file_type::fifo || kind == fs::file_type::character;
}

/// A pipe that nobody reads would never take what is written.
const fs::path& refusingPipes(const fs::path& path) {
    std::error_code error;
    if (fs::status(path, error).type() == fs::file_type::fifo)
        throw OpenFailure(refusal(std::errc::not_supported));
    return path;
}

} // namespace

FileSource::FileSource(const std::string& path, Pipes pipes) {
    const fs::path file = systemPath(path);
    std::error_code error;
    const auto kind = fs::status(file, error).type();
    if (kind == fs::file_type::directory)
        throw OpenFailure(refusal(std::errc::is_a_directory));
    if (kind != fs::file_type::regular && kind != fs::file_type::not_found && !error &&
        !(pipes == Pipes::AreRead && isPipe(kind)))
        throw OpenFailure(refusal(std::errc::not_supported));
    file_ = openFile(file);
    if (!file_)
        throw OpenFailure(systemError());
    std::setvbuf(file_.get(), nullptr, _IONBF, 0); // LineReader has a buffer of its own
}

std::size_t FileSource::read(char* buffer, std::size_t size) {
    const std::size_t count = std::fread(buffer, 1, size, file_.get());
    // What came before a failure is handed out first; the next call tells of it.
    if (count == 0 && std::ferror(file_.get()))
        throw ReadFailure(systemError());
    return count;
}

FileSink::FileSink(const std::string& path)
    : file_(std::make_unique<SystemFile>(refusingPipes(systemPath(path)), SystemFile::Mode::Truncate)) {
    waiting_.reserve(bufferSize);
}

FileSink::~FileSink() {
    try {
        flush();
    } catch (const WriteFailure&) {
        // Closing would have told of it.
    }
}

void FileSink::write(std::string_view bytes) {
    if (waiting_.size() + bytes.size() > bufferSize)
        flush();
    if (bytes.size() > bufferSize)
        file_->write(bytes);
    else
        waiting_.append(bytes);
}

void FileSink::flush() {
    std::string bytes;
    bytes.swap(waiting_); // what fails is not written once more
    file_->write(bytes);
    bytes.clear();
    waiting_.swap(bytes);
}

void FileSink::sync() {
    flush();
    file_->sync();
}

void FileSink::close() {
    flush();
    file_->close();
}

} // namespace orvista
