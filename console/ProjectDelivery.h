#pragma once

#include <string>
#include <vector>

/// The last step of a download or an expansion: what was made gets into its folder.
namespace orvista::console {

/// Whether the folder may be there already, with files in it.
enum class DeliveryFolder { AnyOne, NewOne };

/// Brings a project that was saved beside its bitmaps, and its notes where it has some, into its folder,
/// which is made where it is missing: all files or none. Other files there stay, but for remains of downloads
/// that were killed: these go, also from the folders beside a new one. \param from, to paths of the project
/// file, UTF-8 \returns the names of the bitmaps there that did not come, in the order of bitmapsOfFolder()
/// \throws std::system_error
std::vector<std::string> deliverProject(const std::string& from, const std::string& to,
                                        DeliveryFolder folder);

} // namespace orvista::console
