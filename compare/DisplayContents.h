#pragma once

#include "model/DeviceFiles.h"
#include "model/FetchedFiles.h"
#include "model/Project.h"

#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What a display holds, or would hold after an upload: the five device files and the bitmaps.
namespace orvista {

struct HeldFile {
    const DeviceFile* file = nullptr;
    std::optional<std::string> bytes; ///< nothing where it is not there
    /// What its reader makes of it, written plainly, where that says all: the reader met nothing odd and
    /// every address is that of its row. Nothing else for the play list, which is not read.
    std::optional<std::string> meaning;
};

struct HeldBitmap {
    std::string name;                 ///< UTF-8
    std::string path;                 ///< empty where it does not lie on the disk
    std::optional<std::string> bytes; ///< where it does not
    /// What it is known by on another side: the name in lower case, or as it is where others beside it differ
    /// from it in case only.
    std::string key;
    bool counts = false; ///< an IMG line that the display takes names it, in any ASCII case
};

class DisplayContents {
public:
    /// The files of a folder (UTF-8) as they are: those of a saved project, or of a display, fetched.
    /// \throws std::system_error for a file that is there and cannot be read
    static DisplayContents ofFolder(const std::string& folder);
    /// The same of files that need not lie in a folder.
    /// \param before contents of a folder: where the device files have the same bytes, what was read of them
    ///               counts here, too
    static DisplayContents ofFetched(const FetchedFiles& files, const DisplayContents& before);
    /// What saving the project writes, and its folder's bitmaps. Scripts are those of the project where the
    /// files say the same, so that a line keeps its number.
    static DisplayContents ofProject(const Project& project);
    /// What an upload of the open project sends: it is saved first where it is modified, else its folder's
    /// files go as they are. Scripts as above.
    /// \throws std::system_error for a device file that is not there or cannot be read
    static DisplayContents ofUpload(const Project& project);

    /// In the order of `deviceFiles`.
    const std::vector<HeldFile>& files() const { return files_; }
    /// The names of those that are not there and a reader asks for.
    std::vector<std::string> missingFiles() const;
    /// Ordered by name with ASCII case folded, then by name.
    const std::vector<HeldBitmap>& bitmaps() const { return bitmaps_; }
    /// What the readers make of the files; defaults for what they do not find.
    const Project& project() const { return project_; }
    /// False where the readers took nothing at all.
    bool holdsProject() const { return holdsProject_; }

private:
    DisplayContents() = default;
    void read();
    bool readsAs(const DisplayContents& other) const;
    void keepScripts(const Project& project);
    void findBitmaps(const std::string& folder);
    void addBitmaps(const std::vector<std::string>& names);

    std::vector<HeldFile> files_;
    std::vector<HeldBitmap> bitmaps_;
    std::set<std::string> shown_; ///< names of bitmaps in project_, lower case, UTF-8
    Project project_;
    bool holdsProject_ = false;
};

/// Twelve hexadecimal digits, the same for two contents exactly when nothing that counts differs between
/// them: the first ones of a SHA-256 over the meaning of the four files that are read, or their bytes where
/// they have none, and over the bitmaps that count.
/// \throws std::system_error for a bitmap that cannot be read
std::string fingerprint(const DisplayContents& contents);

} // namespace orvista
