#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace orvista {

class FetchedFiles;

/// Moves files to and from the device. Every call blocks until it is done. Texts and paths are UTF-8.
///
/// Results are whole numbers as the control gives them, fractions rounded with halves to even; whether one
/// means success is judged by transferSucceeded alone. No operation throws for a failure of the device, the
/// network or a file: that is a result of 0 or less.
class TransferControl {
public:
    virtual ~TransferControl() = default;

    /// Host name or address, as the user typed it.
    virtual void RemoteAddress(const std::string& address) = 0;
    virtual void RemotePort(std::int16_t port) = 0;
    /// Connects and logs in with the address and port set before.
    virtual std::int64_t OpenLink() = 0;
    virtual void CloseLink() = 0;
    /// Tells the device that an upload begins. \param argument always empty
    virtual void PrepareUpload(const std::string& argument) = 0;
    /// Tells the device that every file of the upload has arrived.
    virtual void FinishUpload() = 0;
    /// Stores one local file on the device. \param path its full local path
    virtual std::int64_t UploadFile(const std::string& path) = 0;
    /// Fetches the device's files into a local folder.
    /// \param argument always empty
    /// \param folder without a trailing separator
    virtual std::int64_t DownloadFiles(const std::string& argument, const std::string& folder) = 0;
    /// Fetches the same files for whoever only looks at them; after a failure `files` is of no use. Nothing
    /// where the control can only write to a folder.
    virtual std::optional<std::int64_t> fetchFiles(FetchedFiles& /*files*/) { return std::nullopt; }

    /// Why the last operation failed, in words (UTF-8); empty where it did not, or where the control cannot
    /// tell. Of FinishUpload: why the device did not confirm the end.
    virtual std::string cause() const { return {}; }
};

/// Results count as 16-bit signed numbers: success is 1 to 32767, anything else is a failure.
constexpr bool transferSucceeded(std::int64_t result) {
    return result > 0 && result <= INT16_MAX;
}

} // namespace orvista
