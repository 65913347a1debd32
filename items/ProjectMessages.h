#pragma once

#include "model/Project.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// All messages of a project in one row: the regular ones, then the emergency ones.
namespace orvista {

inline constexpr std::size_t messageCount = regularMessageCount + emergencyMessageCount;

/// \param position from 0 to messageCount - 1
std::string messageName(std::size_t position);
const std::string& messageScript(const Project& project, std::size_t position);
std::string& messageScript(Project& project, std::size_t position);
/// ASCII case folded; nothing when it names no message.
std::optional<std::size_t> messagePosition(std::string_view name);

} // namespace orvista
