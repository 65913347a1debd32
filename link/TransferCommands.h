#pragma once

#include <string>
#include <vector>

namespace orvista {

/// What came of fetching a device's files.
struct FetchedDisplay {
    enum class End {
        Cancelled, ///< by the user
        Failed,    ///< which was shown
        Fetched
    };
    End end = End::Cancelled;
    std::string name;                 ///< of the device as the user named it, UTF-8; empty when cancelled
    std::vector<std::string> missing; ///< device files that it does not have, which made it fail, if known
    std::string address = {};         ///< of the device alone, as typed, UTF-8
};

/// The ways between the project and the device, as menu and toolbar call them.
class TransferCommands {
public:
    virtual ~TransferCommands() = default;
    virtual void upload() = 0;
    virtual FetchedDisplay download() = 0;
    /// Asks for a device and fetches its files into a folder that is there, as a download does; the project
    /// and its folder stay as they are.
    /// \param title of the question and of the transfer, UTF-8
    /// \param folder UTF-8
    virtual FetchedDisplay fetch(const std::string& title, const std::string& folder) = 0;
};

} // namespace orvista
