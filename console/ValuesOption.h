#pragma once

#include "display/FieldValues.h"
#include "items/ProjectNotes.h"

#include <string>
#include <string_view>

/// The values that a picture's fields show, as the command line names them.
namespace orvista::console {

/// "widest", "RegVar1=-99.9,PumpRuns=on", or a .json file as `orvista read --json` prints it.
/// \throws CommandFailure
FieldValues namedValues(const std::string& argument, const Project& project, const ProjectNotes& notes);

/// What such a file says; numbers that JSON has not are taken from the raw words.
/// \throws CommandFailure \param file its name, for what is wrong
OwnValues valuesOfReading(std::string_view json, const std::string& file);

} // namespace orvista::console
