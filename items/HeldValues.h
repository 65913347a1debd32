#pragma once

#include "display/DisplayValues.h"
#include "display/PlayList.h"
#include "link/ModbusReader.h"

#include <vector>

/// What was read of a display, as what it shows goes by it.
namespace orvista {

/// What its variables hold; 0 and off for those that no request reaches. The clock is without meaning.
DisplayValues heldValues(const std::vector<DisplayItem>& items);

MessageCoils heldCoils(const std::vector<DisplayItem>& items);

} // namespace orvista
