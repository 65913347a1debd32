#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace orvista {

/// Gives the file at `path` (UTF-8) these bytes, on the disk when it returns. They are written under a name
/// that does not exist yet and put in the file's place in one step, so that whatever happens either the old
/// file is there or the new one. Its permissions stay, and through a link the file it leads to is replaced.
/// A file that may be written in a folder that may not is written in place; when that fails, its old bytes
/// are put back.
/// \throws OpenFailure where nothing can be written, also where the file itself is write-protected or the
///         system does not say what is there;
///         WriteFailure when it fails later
void replaceFile(const std::string& path, std::string_view bytes);

/// Puts an empty file in the place of one that has other names (hard links), which keep the bytes. False
/// where the folder lets no file be made, so that the names stay together. \throws OpenFailure where the file
/// is write-protected; WriteFailure
bool leaveOtherNames(const std::filesystem::path& file);

} // namespace orvista
