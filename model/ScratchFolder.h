#pragma once

#include <string>

namespace orvista {

/// A folder of its own under the system's temporary folder, for the present user alone. It goes with the
/// object, with everything in it.
class ScratchFolder {
public:
    /// \throws std::system_error where none can be made; `what()` names the folder that it was to be in
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// UTF-8, without a separator at its end.
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

/// Why no file of 1 MB can be written to the folder: a sentence that begins with the folder; empty where one
/// can. For failures of something that also reads, or talks to a display.
std::string writingFault(const std::string& folder);

} // namespace orvista
