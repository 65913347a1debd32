#pragma once

#include <cstddef>
#include <string>

namespace orvista {

/// How the address map is named where items are.
inline constexpr const char* addressMapName = "address map";

/// A place in a project to go to.
struct ItemPlace {
    std::string item;     ///< "STDMSG12", "ALTMSG2", "RegVar3", "CoilVar3" or addressMapName
    std::size_t line = 0; ///< of a message's script, from 1; 0 for the item as a whole
    bool operator==(const ItemPlace&) const = default;
};

} // namespace orvista
