#include "model/Files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace orvista {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t bufferSize = std::size_t{1} << 16;

std::error_code systemError() {
    return {errno, std::generic_category()};
}

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

/// A pipe that nobody reads would never take what is written.
const fs::path& refusingPipes(const fs::path& path) {
    std::error_code error;
    if (fs::status(path, error).type() == fs::file_type::fifo)
        throw OpenFailure(refusal(std::errc::not_supported));
    return path;
}

} // namespace

fs::path systemPath(const std::string& utf8) {
#ifdef _WIN32
    try {
        return {std::u8string(utf8.begin(), utf8.end())};
    } catch (const fs::filesystem_error&) {
        return {}; // bytes that are no UTF-8 name no file here
    }
#else
    return {utf8}; // paths are bytes here; converting could refuse some
#endif
}

std::string utf8Path(const fs::path& path) {
#ifdef _WIN32
    try {
        const auto text = path.u8string();
        return {text.begin(), text.end()};
    } catch (const fs::filesystem_error&) {
        return {}; // half a surrogate pair, which no other path can hold
    }
#else
    return path.native();
#endif
}

FileSource::FileSource(const std::string& path) {
    const fs::path file = systemPath(path);
    std::error_code error;
    const auto kind = fs::status(file, error).type();
    if (kind == fs::file_type::directory)
        throw OpenFailure(refusal(std::errc::is_a_directory));
    if (kind != fs::file_type::regular && kind != fs::file_type::not_found && !error)
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
    : file_(refusingPipes(systemPath(path)), SystemFile::Mode::Truncate) {
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
        file_.write(bytes);
    else
        waiting_.append(bytes);
}

void FileSink::flush() {
    std::string bytes;
    bytes.swap(waiting_); // what fails is not written once more
    file_.write(bytes);
    bytes.clear();
    waiting_.swap(bytes);
}

void FileSink::sync() {
    flush();
    file_.sync();
}

void FileSink::close() {
    flush();
    file_.close();
}

std::size_t MemorySource::read(char* buffer, std::size_t size) {
    const std::size_t count = std::min(size, rest_.size());
    std::copy_n(rest_.begin(), count, buffer);
    rest_.remove_prefix(count);
    return count;
}

LineReader::LineReader(ByteSource& source) : source_(source) {
    const std::string_view whole = source.takeWhole();
    if (whole.empty())
        buffer_.resize(bufferSize);
    bytes_ = whole.empty() ? buffer_.data() : whole.data();
    size_ = whole.size();
}

bool LineReader::fill() {
    if (atStart_)
        skipByteOrderMark();
    if (position_ == size_ && !buffer_.empty()) {
        position_ = 0;
        size_ = source_.read(buffer_.data(), buffer_.size());
        carriageReturn_.reset();
        lineFeed_.reset();
    }
    return position_ < size_;
}

std::size_t LineReader::endOfLine() {
    // The library searches far faster than a look at every byte. What it found is kept: a file that ends its
    // lines in one way only is not searched for the other end line by line.
    const auto next = [this](char end, std::optional<std::size_t>& known) {
        if (!known || *known < position_)
            known = std::min(std::string_view(bytes_, size_).find(end, position_), size_);
        return *known;
    };
    return std::min(next('\r', carriageReturn_), next('\n', lineFeed_));
}

void LineReader::skipByteOrderMark() {
    atStart_ = false;
    // A source may hand out its first bytes one by one.
    while (size_ < utf8ByteOrderMark.size() && !buffer_.empty()) {
        const std::size_t more = source_.read(buffer_.data() + size_, buffer_.size() - size_);
        if (more == 0)
            break;
        size_ += more;
    }
    if (std::string_view(bytes_, size_).starts_with(utf8ByteOrderMark))
        position_ = utf8ByteOrderMark.size();
    skippedMark_ = position_ > 0;
}

bool LineReader::next(std::string& line) {
    std::string_view view;
    const bool found = next(view);
    line = view;
    return found;
}

bool LineReader::next(std::string_view& line) {
    joined_.clear();
    line = {};
    bool found = false;
    while (fill()) {
        if (lastWasCarriageReturn_) {
            lastWasCarriageReturn_ = false;
            if (bytes_[position_] == '\n') {
                ++position_;
                continue;
            }
        }
        number_ += found ? 0 : 1;
        found = true;
        const std::size_t end = endOfLine();
        line = {bytes_ + position_, end - position_};
        position_ = end;
        if (end == size_ || !joined_.empty())
            line = joined_.append(line);
        if (end == size_)
            continue;
        lastWasCarriageReturn_ = bytes_[end] == '\r';
        ++position_;
        return true;
    }
    return found;
}

} // namespace orvista
