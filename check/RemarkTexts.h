#pragma once

#include "check/Rules.h"
#include "script/ScriptInterpreter.h"

#include <string>

namespace orvista {

/// The code under which a line that does nothing is found.
Code codeOf(RemarkReason reason);

/// Why the display skips a line, and what to write instead.
std::string remarkText(const ScriptRemark& remark);

} // namespace orvista
