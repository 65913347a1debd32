#pragma once

#include "check/Finding.h"

#include <string>

namespace orvista::console {

/// "STDMSG12:3:8", without what the place does not say.
std::string placeText(const Place& place);

/// A finding on one line, as compilers write theirs: "PROJECT:STDMSG12:3:8: warning: ... [text-cut]".
std::string findingText(const std::string& project, const Finding& finding);

} // namespace orvista::console
