#pragma once

#include "compare/ContentsComparison.h"

#include <string>
#include <vector>

/// What is said of a display beside what an upload sends: sentences in UTF-8, without a stop at the end.
namespace orvista {

/// Whether the second side, a display, holds what the first sends, byte for byte; else files and items by
/// name, as many as a line has room for.
std::string verifiedText(const std::string& display, const ContentsComparison& comparison);

/// "stdmsg.ilm is not there".
/// \param names of at least one file
std::string notThereText(const std::vector<std::string>& names);

} // namespace orvista
