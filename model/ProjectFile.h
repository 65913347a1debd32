#pragma once

#include "model/Bytes.h"
#include "model/FileContext.h"
#include "model/FileRemarks.h"
#include "model/Project.h"

#include <functional>
#include <string>
#include <string_view>

namespace orvista::DocMgrModule {

enum class SaveOutcome {
    ProjectFileFailed, ///< nothing but the message happened; the device files were not written
    DeviceFileFailed,  ///< the project file is written, one or more device files are not
    Saved
};

/// Writes the project file into a sink.
/// \throws WriteFailure
void writeProjectFile(ByteSink& sink, const Project& project);

/// The extension of project files, with its dot.
inline constexpr std::string_view projectExtension = ".orx";
/// The name of a project whose file is called `fileName`: without its last four characters, the extension;
/// empty when it has no more than those.
std::string projectNameOfFile(const std::string& fileName);
/// folder + separator + name + ".orx"
std::string projectFilePath(const PathRules& paths, const std::string& folder, const std::string& name);

/// Writes the project file and then the five device files into `folder`, and tells the user of every
/// failure. All of them are on the disk when it returns, and the project file that stood there before is
/// replaced in one step. Clearing the modified mark is the caller's.
SaveOutcome SaveProject(const std::string& folder, const std::string& name, const Project& project,
                        const FileContext& context);

/// The folder (UTF-8) whose device files are about to be replaced, and what was met in the project file.
using BeforeReplacing = std::function<void(const std::string& folder, const FileRemarks& remarks)>;

/// Reads the project file at `path` (UTF-8): splits it into the device files of its folder, then reads
/// those. False after a failure, which was shown; what was read before stays in the model and on disk.
/// A download that was killed while its files appeared in the folder is finished first, as by a save.
/// \param beforeReplacing is told what the readers meet before a device file is replaced
bool ReadProject(const std::string& path, Project& project, const FileContext& context,
                 const BeforeReplacing& beforeReplacing = {});

/// Reads the project file at `path` (UTF-8; its folder is the present one when it names none) as opening it
/// does, with the same messages, but writes nothing anywhere, except for finishing a download: what stands in
/// the project file is read from there, and the device file of a section that is missing from the project's
/// folder. ProjPath and ProjName become the path's. False after a failure of the project file, which was
/// shown; what was read before stays in the model.
/// \param remarks gets what the readers met
bool readProjectWithoutWriting(const std::string& path, Project& project, const FileContext& context,
                               FileRemarks* remarks = nullptr);

} // namespace orvista::DocMgrModule
