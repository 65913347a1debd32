#pragma once

#include "model/Item.h"

#include <QString>

#include <vector>

namespace orvista {

/// What ends the text of a row whose item is shown with an edit that is not applied; empty for other items.
QString notAppliedMark(const std::vector<Item>& notAppliedItems, Item item);

} // namespace orvista
