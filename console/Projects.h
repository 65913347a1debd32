#pragma once

#include "console/CommandFailure.h"
#include "model/FileRemarks.h"
#include "model/Project.h"

#include <string>

namespace CLI {
class App;
}

namespace orvista::console {

/// Reads a project as opening it does, without writing anything.
/// \param remarks gets what the readers met
/// \throws CommandFailure, also for a name that does not end in ".orx"
Project readProject(const std::string& path, FileRemarks* remarks = nullptr);

/// A project of which something was lost or moved when it was read.
class NotWholeFailure : public CommandFailure {
public:
    explicit NotWholeFailure(const std::string& text) : CommandFailure(ExitStatus::Unusable, text) {}
};

/// The same for a command that sends the project, hands it over or saves it.
/// \param goesOn with a project that is not whole
/// \throws NotWholeFailure otherwise, CommandFailure
Project readWholeProject(const std::string& path, bool goesOn);
/// The option of such a command, "--not-whole".
void addNotWhole(CLI::App& command, bool& goesOn);

/// Writes a project and its device files as saving it does.
/// \param path of the project file
/// \throws CommandFailure
void saveProject(const std::string& path, const Project& project);

/// \throws CommandFailure for a path that does not end in ".orx", in any case
void expectProject(const std::string& path);
/// \throws CommandFailure unless the path ends in a name and ".orx"
void expectProjectName(const std::string& path);

/// The path with ".orx", which may be left out.
std::string withProjectExtension(const std::string& path);
/// The same for a project that is written under another name: one with another ending is refused, which is
/// more likely a slip.
/// \throws CommandFailure
std::string writtenProjectName(const std::string& path);

} // namespace orvista::console
