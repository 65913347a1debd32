#pragma once

#include "check/Finding.h"
#include "model/Item.h"
#include "model/Project.h"

namespace orvista {

/// What is wrong with a variable's settings.
Findings checkVariable(Item item, const FloatVariable& variable);
Findings checkVariable(Item item, const BooleanVariable& variable);

} // namespace orvista
