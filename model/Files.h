#pragma once

#include "model/Bytes.h"

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

/// Files as sources and sinks of bytes.
namespace orvista {

class SystemFile;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

/// Whether reading may wait for what another program writes to a pipe or a terminal.
enum class Pipes { AreRefused, AreRead };

class FileSource final : public ByteSource {
public:
    /// \param path UTF-8; of a regular file, or a link to one, unless pipes are read, too
    /// \throws OpenFailure
    explicit FileSource(const std::string& path, Pipes pipes = Pipes::AreRefused);
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

    std::unique_ptr<SystemFile> file_;
    std::string waiting_; ///< not yet handed to the system
};

} // namespace orvista
