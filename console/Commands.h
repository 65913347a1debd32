#pragma once

#include "console/CommandFailure.h"

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// One function for each command: it adds the command's options to the program's, and what is to be done to
/// `run` once they have been read.
namespace orvista::console {

using Run = std::function<ExitStatus()>;

void addCheck(CLI::App& program, Run& run);
void addExpand(CLI::App& program, Run& run);
void addMaster(CLI::App& program, Run& run);
void addShow(CLI::App& program, Run& run);
void addAddresses(CLI::App& program, Run& run);
void addBook(CLI::App& program, Run& run);
void addMessages(CLI::App& program, Run& run);
void addVariables(CLI::App& program, Run& run);
void addNames(CLI::App& program, Run& run);
void addCompare(CLI::App& program, Run& run);
void addFingerprint(CLI::App& program, Run& run);
void addFix(CLI::App& program, Run& run);
void addMend(CLI::App& program, Run& run);
void addNew(CLI::App& program, Run& run);
void addUpload(CLI::App& program, Run& run);
void addDownload(CLI::App& program, Run& run);
/// What commands on many displays start.
void addWorker(CLI::App& program, Run& run);
void addRead(CLI::App& program, Run& run);
void addSwitch(CLI::App& program, Run& run);
void addWrite(CLI::App& program, Run& run);
void addHelp(CLI::App& program, Run& run);
void addVersion(CLI::App& program, Run& run);

/// "orvista messages export"
std::string fullName(const CLI::App& command);
/// The commands of the program, or of a group, that the help tells of.
std::vector<std::string> commandNames(const CLI::App& group);

} // namespace orvista::console
