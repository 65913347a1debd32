#pragma once

#include "script/ScriptPage.h"

#include <span>
#include <string>
#include <vector>

namespace orvista {

/// The bitmaps that pages name, as written (Windows-1252), each once whatever its ASCII case.
std::vector<std::string> bitmapNames(std::span<const ScriptPage> pages);

} // namespace orvista
