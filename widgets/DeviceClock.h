#pragma once

#include "display/DisplayValues.h"

class QDateTime;

namespace orvista {

/// A moment as the display's clock shows it.
LocalTime localTime(const QDateTime& time);

} // namespace orvista
