#pragma once

#include "model/JsonValue.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The one reader of JSON: strict (RFC 8259), of UTF-8, with or without a byte order mark.
namespace orvista {

/// Of arrays and objects in each other, the outermost counted.
inline constexpr std::size_t deepestJson = 16;

struct JsonReading {
    JsonValue value;   ///< null where there is a fault
    std::string fault; ///< "line 3, column 8 is not JSON", a column a byte; empty where it is JSON
    /// "\"unit\" stands there twice in \"RegVar1\""; the member stands where its first one stood, with the
    /// last one's value.
    std::vector<std::string> doubledKeys;
};

/// Time and memory grow with the bytes, whatever they are; callers bound their number.
JsonReading readJson(std::string_view bytes);

} // namespace orvista
