#pragma once

#include <string>
#include <vector>

namespace orvista::console {

/// Runs the command that the arguments (UTF-8, without the program's name) ask for. Returns the exit status:
/// 0 all well, 1 something found, different or failed, 2 wrong usage or unreadable input.
int runProgram(std::vector<std::string> arguments);

} // namespace orvista::console
