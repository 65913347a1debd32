#pragma once

#include <filesystem>
#include <string>

namespace orvista::DocMgrModule {

/// Keeps the project file that a save is about to replace, as NAME.orx.bak beside it, until the save has
/// succeeded: a disk that fills up half-way must not cost the last good version.
class ProjectFileBackup {
public:
    /// Renames the file out of the way when it is a writable regular file (a link is written through) and no
    /// backup of an earlier failed save stands there. Failing to do so is silent: the file is then replaced
    /// in place.
    /// \param file, backup UTF-8 paths
    ProjectFileBackup(const std::string& file, const std::string& backup);

    /// The new file could not be created: puts the old one back.
    void restore();
    /// The new file stands: gives it the old one's permissions.
    void created();
    /// The save succeeded: removes the backup, also one of an earlier failed save.
    void discard();

private:
    std::filesystem::path file_;
    std::filesystem::path backup_;
    bool made_ = false;
};

} // namespace orvista::DocMgrModule
