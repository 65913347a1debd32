#pragma once

#include "check/Finding.h"
#include "model/Project.h"

#include <string>

namespace orvista {

/// What is wrong with a variable's settings. `item` is the variable's name.
Findings checkVariable(const std::string& item, const FloatVariable& variable);
Findings checkVariable(const std::string& item, const BooleanVariable& variable);

} // namespace orvista
