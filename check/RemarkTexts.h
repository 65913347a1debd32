#pragma once

#include "check/Codes.h"
#include "script/ScriptInterpreter.h"

#include <string>

namespace orvista {

/// The code under which a line that does nothing is found.
const codes::Code& codeOf(RemarkReason reason);

/// Why the display skips a line, and what to write instead.
std::string remarkText(const ScriptRemark& remark);

} // namespace orvista
