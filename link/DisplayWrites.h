#pragma once

#include "link/DisplayAddress.h"
#include "link/ModbusAnswers.h"
#include "model/Project.h"

#include <stdexcept>
#include <string>
#include <vector>

/// Switching messages and writing variables of a display by their names.
namespace orvista {

/// A wish that cannot be carried out; `what()` says why. Nothing has been sent then.
class BadWrite : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

/// A request, and what it is for: "STDMSG3".
struct DisplayWrite {
    std::string what;
    Frame request;
};

/// A coil for each message, once each: those to be switched off, then those to be switched on.
/// \throws BadWrite for a name that is not a message, one in both lists, one without an address
std::vector<DisplayWrite> switchWrites(const Project& project, const std::vector<std::string>& on,
                                       const std::vector<std::string>& off);

/// Both message blocks with exactly these messages on.
/// \throws BadWrite for a name that is not a message, and for a block with messages without an address
std::vector<DisplayWrite> onlyWrites(const Project& project, const std::vector<std::string>& on);

/// Reads "RegVar3=12.5", "CoilVar2=on" and, by address, "200=1.5" for a float in registers 200 and 201 and
/// "200=on" for coil 200. In the order given.
/// \param project null where there is none, and so no names
/// \throws BadWrite
std::vector<DisplayWrite> assignedWrites(const std::vector<std::string>& assignments, const Project* project);

/// Sends them in order over one connection, each when the one before is confirmed.
/// \throws DisplayFailure, which names what was written before
void writeToDisplay(const DisplayAddress& display, const std::vector<DisplayWrite>& writes,
                    std::chrono::milliseconds timeout = answerTimeout);

} // namespace orvista
