#pragma once

#include "items/CopiedItems.h"
#include "items/MessageDigest.h"
#include "model/Project.h"

#include <string>

namespace orvista {

/// Copied items to read, with the project they come from: a line of heads and one for each item, with tabs
/// between the cells; cells with line ends are in quotes, as spreadsheets take them. UTF-8.
std::string copiedText(const CopiedItems& copied, const Project& project, const MessageDigests& messages);

} // namespace orvista
