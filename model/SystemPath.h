#pragma once

#include <filesystem>
#include <string>

namespace orvista {

/// The operating system's form of a UTF-8 path; an empty one where the system cannot hold the bytes.
std::filesystem::path systemPath(const std::string& utf8);
/// The UTF-8 form of an operating system's path; empty where the system's name is not text.
std::string utf8Path(const std::filesystem::path& path);

} // namespace orvista
