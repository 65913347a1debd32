#pragma once

#include "model/SystemFile.h"

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

/// Files as byte sources and sinks. Readers and writers work on the interfaces; tests give them memory.
namespace orvista {

/// A file could not be opened or created. `what()` is the system's own description.
class OpenFailure : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Reading failed after the file was opened.
class ReadFailure : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Writing, flushing or closing failed after the file was created.
class WriteFailure : public std::system_error {
public:
    using std::system_error::system_error;
};

class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// Up to `size` bytes into `buffer`; 0 at the end.
    /// \throws ReadFailure
    virtual std::size_t read(char* buffer, std::size_t size) = 0;
    /// Everything that is left, when it is in memory anyway: it counts as read, and stays there as long as
    /// the source's own bytes. Otherwise nothing.
    virtual std::string_view takeWhole() { return {}; }
};

class ByteSink {
public:
    virtual ~ByteSink() = default;
    /// \throws WriteFailure
    virtual void write(std::string_view bytes) = 0;
    /// Flushes and closes; what only shows then is a failure too. A sink that is destroyed without it is
    /// closed silently.
    /// \throws WriteFailure
    virtual void close() = 0;
};

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

class FileSource final : public ByteSource {
public:
    /// Only regular files (or links to them) are opened: a pipe would never answer.
    /// \param path UTF-8
    /// \throws OpenFailure
    explicit FileSource(const std::string& path);
    std::size_t read(char* buffer, std::size_t size) override;

private:
    FileHandle file_;
};

class FileSink final : public ByteSink {
public:
    /// Creates or truncates; a pipe is refused, a device is written to.
    /// \param path UTF-8
    /// \throws OpenFailure
    explicit FileSink(const std::string& path);
    ~FileSink() override;
    void write(std::string_view bytes) override;
    void close() override;
    /// Waits until what was written is on the disk.
    /// \throws WriteFailure
    void sync();

private:
    void flush();

    SystemFile file_;
    std::string waiting_; ///< not yet handed to the system
};

class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::string_view bytes) : rest_(bytes) {}
    std::size_t read(char* buffer, std::size_t size) override;
    std::string_view takeWhole() override { return std::exchange(rest_, {}); }

private:
    std::string_view rest_;
};

class MemorySink final : public ByteSink {
public:
    void write(std::string_view bytes) override { bytes_.append(bytes); }
    void close() override {}
    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

inline constexpr std::string_view utf8ByteOrderMark = "\xEF\xBB\xBF";

/// Splits a source into lines. CR LF, LF alone and CR alone all end a line, a last line without an end
/// counts, and an UTF-8 byte-order mark at the start is skipped. NUL and Ctrl-Z are ordinary characters.
class LineReader {
public:
    explicit LineReader(ByteSource& source);
    /// False at the end of the source. `line` has no line end.
    /// \throws ReadFailure
    bool next(std::string& line);
    /// The same without a copy of its own: `line` holds until the next call.
    bool next(std::string_view& line);
    /// Of the line that next() gave last, from 1.
    std::size_t number() const { return number_; }
    bool skippedMark() const { return skippedMark_; }

private:
    bool fill();
    void skipByteOrderMark();
    /// Where the next line end of the buffer stands; its size when it holds none.
    std::size_t endOfLine();

    ByteSource& source_;
    std::vector<char> buffer_;    ///< empty when the source is in memory
    const char* bytes_ = nullptr; ///< the buffer's, or the source's own
    std::string joined_;          ///< a line that did not fit into the buffer at once
    std::size_t position_ = 0;
    std::size_t size_ = 0;
    std::optional<std::size_t> carriageReturn_;
    std::optional<std::size_t> lineFeed_;
    std::size_t number_ = 0;
    bool atStart_ = true;
    bool skippedMark_ = false;
    bool lastWasCarriageReturn_ = false;
};

inline constexpr std::string_view lineEnd = "\r\n";

/// The operating system's form of a UTF-8 path; an empty one where the system cannot hold the bytes.
std::filesystem::path systemPath(const std::string& utf8);
/// The UTF-8 form of an operating system's path; empty where the system's name is not text.
std::string utf8Path(const std::filesystem::path& path);

} // namespace orvista
