#pragma once

#include <string>
#include <string_view>

namespace orvista {

/// Writes a file whole or not at all: the bytes go to a new file beside it, which then takes its place. A
/// link is kept and the file it leads to is replaced; what is not a regular file (a device, a pipe) is
/// written to as it is. \param path UTF-8 \throws OpenFailure, WriteFailure; nothing is left behind then
void writeWholeFile(const std::string& path, std::string_view bytes);

} // namespace orvista
