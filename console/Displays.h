#pragma once

#include "link/DisplayAddress.h"
#include "model/FileRemarks.h"
#include "model/Project.h"
#include "model/ScratchFolder.h"

#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// Displays on the network, as commands name them.
namespace orvista::console {

/// Where files go to and come from. \throws CommandFailure for text that names no display
DisplayAddress transferAddress(const std::string& argument);

/// The argument DISPLAY of the commands that speak Modbus. \throws CommandFailure
DisplayAddress modbusAddress(const std::string& argument);
CLI::Option* addModbusDisplay(CLI::App& command, std::string& display);
/// --project for what is on that display; commands may require it.
CLI::Option* addProjectOnDisplay(CLI::App& command, std::string& project,
                                 const std::string& description = "The project that is on the display, .orx");

/// A folder for what is sent or fetched meanwhile. \throws CommandFailure
ScratchFolder scratchFolder();

/// Fetches the files of a display into a folder that is there already, and shows how far it is.
/// \throws CommandFailure
void fetchDisplay(const DisplayAddress& display, const std::string& folder);

/// The project in the device files that were fetched into that folder, which is its own.
/// \param display as it was named, for what is said of failures
/// \param remarks gets what is met in the files
/// \throws CommandFailure
Project readFetchedProject(const std::string& folder, const std::string& display,
                           FileRemarks* remarks = nullptr);

} // namespace orvista::console
