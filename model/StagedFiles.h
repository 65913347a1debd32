#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Files that wait in a folder inside the one in which they are to appear, called 0, 1, 2 and so on, until
/// all of them are complete. While they appear, a list of their names lies beside them, and what stood under
/// a name is kept there: so whoever comes after a program that was killed can go on where it ended.
namespace orvista {

/// "downloadN.tmp", the name of the folder in which they wait.
std::string stagingName(int number);

/// False for a name that the disk cannot hold.
bool canAppear(const std::filesystem::path& path);

/// Lets the files of `staging` appear under these names in the folder around it, but for names that the disk
/// refuses. \param names UTF-8, without a folder; as many as there are files, and in their order
/// \throws std::system_error where one cannot appear; the others are as they were, then
void letAppear(const std::filesystem::path& staging, const std::vector<std::string>& names);

/// Removes the folder with all that is left in it, unless something there is still to be put back.
void removeStaging(const std::filesystem::path& staging) noexcept;

/// Lets all files appear of which a killed program had brought over some into `folder` (UTF-8); where that
/// cannot be done, it takes those back. What is under way, or cannot be mended, stays as it is.
void finishStaging(const std::string& folder) noexcept;
/// The same, and removes what killed programs left before any file had appeared.
void clearStaging(const std::string& folder) noexcept;

} // namespace orvista
