#pragma once

#include "console/CommandFailure.h"

#include <CLI/App.hpp>

#include <functional>

/// One function for each command: it adds the command's options to the program's, and what is to be done to
/// `run` once they have been read.
namespace orvista::console {

using Run = std::function<ExitStatus()>;

void addCheck(CLI::App& program, Run& run);
void addShow(CLI::App& program, Run& run);
void addAddresses(CLI::App& program, Run& run);
void addMessages(CLI::App& program, Run& run);
void addVariables(CLI::App& program, Run& run);
void addCompare(CLI::App& program, Run& run);
void addNew(CLI::App& program, Run& run);
void addUpload(CLI::App& program, Run& run);
void addDownload(CLI::App& program, Run& run);
/// What the two start for each display.
void addUploadWorker(CLI::App& program, Run& run);
void addDownloadWorker(CLI::App& program, Run& run);
void addRead(CLI::App& program, Run& run);
void addSwitch(CLI::App& program, Run& run);
void addWrite(CLI::App& program, Run& run);

} // namespace orvista::console
