#pragma once

#include "check/Finding.h"
#include "model/Project.h"

namespace orvista {

/// What is wrong with where the blocks of items lie; the item is "address map".
Findings checkAddressMap(const Project& project);

} // namespace orvista
