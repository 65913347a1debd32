#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>

/// Files that are written, as the system has them: a call that a signal interrupts is made again.
namespace orvista {

/// Why the last call to the system failed.
std::error_code systemError();

class SystemFile {
public:
    enum class Mode {
        Truncate, ///< an existing file is emptied, else one is made
        New,      ///< there must be none
        Existing, ///< there must be one; it keeps its bytes until they are overwritten
        Append    ///< every write goes to the end, whoever else writes; where there is no file one is made
    };
    /// \throws OpenFailure
    SystemFile(const std::filesystem::path& path, Mode mode);
    ~SystemFile();
    SystemFile(const SystemFile&) = delete;
    SystemFile& operator=(const SystemFile&) = delete;

    /// \throws WriteFailure, as the others
    void write(std::string_view bytes);
    /// Ends the file after `size` bytes.
    void truncate(std::uint64_t size);
    /// Gives the file the permissions of another, and its owner and group where the user may. Nothing on
    /// systems that keep those when a file is replaced.
    void takePermissionsOf(const std::filesystem::path& other);
    /// Waits until the bytes are on the disk; where a file knows no such thing, nothing.
    void sync();
    void close();
    /// Keeps the file for this program until it is closed. False while another one has it; where files cannot
    /// be kept, nobody has any.
    bool lock();

private:
    int file_ = -1;
};

/// What a name stands for, be it a link; `not_found` where there is none.
/// \throws OpenFailure where the system does not say
std::filesystem::file_type kindOf(const std::filesystem::path& path);
/// How many names (hard links) the file has.
/// \throws OpenFailure where the system does not say
std::uintmax_t nameCount(const std::filesystem::path& path);
/// Puts one file in the place of another, in one step.
/// \throws WriteFailure
void renameOver(const std::filesystem::path& from, const std::filesystem::path& to);
/// Waits until the names in a folder are on the disk. A folder that cannot be read is left to the system.
/// \throws WriteFailure
void syncFolder(const std::filesystem::path& folder);

} // namespace orvista
