#pragma once

#include <QString>

#include <string>
#include <vector>

namespace orvista {

/// What ends the text of a row whose item is shown with an edit that is not applied; empty for other items.
QString notAppliedMark(const std::vector<std::string>& notAppliedItems, const std::string& item);

} // namespace orvista
