#pragma once

#include <string_view>

namespace orvista {

/// True for "*.bmp" in any case: the files of a project's folder that go to the device beside its own.
bool isBitmapName(std::string_view name);

} // namespace orvista
