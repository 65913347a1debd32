#pragma once

#include <optional>
#include <string>

namespace orvista {

/// The ways between the project and the device, as menu and toolbar call them.
class TransferCommands {
public:
    virtual ~TransferCommands() = default;
    virtual void upload() = 0;
    virtual void download() = 0;
    /// Asks for a device and fetches its files into a folder that is there, as a download does; the project
    /// and its folder stay as they are.
    /// \param title of the question and of the transfer, UTF-8
    /// \param folder UTF-8
    /// \returns the device as the user named it, UTF-8; nothing when he cancelled, or after a failure, which
    ///          was shown
    virtual std::optional<std::string> fetch(const std::string& title, const std::string& folder) = 0;
};

} // namespace orvista
