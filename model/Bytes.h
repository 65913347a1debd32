#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

/// Sources and sinks of bytes. Readers and writers work on the interfaces: they do not know of files.
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

/// The bytes that are left, but at most that many of them.
/// \throws ReadFailure
std::string bytesUpTo(ByteSource& source, std::size_t most);

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

} // namespace orvista
