#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// How nodes and items are named: a letter or word followed by the item's number, which counts from 1.
namespace orvista {

/// A node's key taken apart: "F64" is letter 'F' and number 64. A group's key ("REGISTER") has number 0.
struct NodeKey {
    char letter = 0;
    std::int64_t number = 0;

    explicit NodeKey(std::string_view key);
    /// True when the key names one of the items 1 to `count` of that letter (case counts).
    bool names(char itemLetter, std::size_t count) const;
    /// The item's place in its table, from 0.
    std::size_t index() const { return static_cast<std::size_t>(number - 1); }
};

/// The table index (from 0) of a name such as "RegVar64", whose word has `wordLength` characters. A name
/// without a number gives an index outside every table.
std::size_t indexOfName(std::string_view name, std::size_t wordLength);

/// Word and number: itemName("RegVar", 63) is "RegVar64".
std::string itemName(std::string_view word, std::size_t index);

} // namespace orvista
