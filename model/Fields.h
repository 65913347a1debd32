#pragma once

#include "model/Item.h"
#include "model/Project.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What items consist of: one list for each kind, which all that read, write, show, compare, copy or undo
/// items go through.
namespace orvista {

/// One of the texts of an item, in device bytes. An address counts as its decimal digits.
struct Field {
    enum class Rule : std::uint8_t {
        Script, ///< lines that end in CR LF; an empty one is CLEAR
        Line,   ///< any text without line ends
        Number, ///< a decimal number
        Whole,  ///< digits of a number in the range below
        Switch  ///< 0 or 1
    };
    /// Of which record it is a member; nothing for a script, which is no record.
    using Member = std::variant<std::monostate, std::string FloatVariable::*, std::string BooleanVariable::*,
                                std::int32_t Project::*>;

    std::string_view name; ///< in tables and comparisons: "script", "width"
    Rule rule;
    Member member;
    std::int64_t lowest = 0; ///< of a whole number
    std::int64_t highest = 0;
    bool isRead = true; ///< of the display's files; what is not follows from the other fields there
};

/// In the order in which files and clipboards have them.
std::span<const Field> fieldsOf(Kind kind);
/// ASCII case counts; null where the kind has no field of that name.
const Field* fieldNamed(Kind kind, std::string_view name);
/// The only field of a message.
const Field& scriptField();

/// \param field of the item's kind, here and below
std::string textOf(const Project& project, Item item, const Field& field);
/// Of all fields, in their order.
std::vector<std::string> textsOf(const Project& project, Item item);
bool holdSame(const Project& one, const Project& other, Item item, const Field& field);
/// False, and nothing changes, where the text is not the digits of an address and has to be.
[[nodiscard]] bool setText(Project& project, Item item, const Field& field, std::string_view text);
/// Replaces a part of the text, which must stand there; an address as a whole.
/// \throws std::invalid_argument where setText() refuses
void replaceText(Project& project, Item item, const Field& field, std::size_t at, std::string_view part,
                 std::string_view by);

/// Why a cell of a table cannot be a field's text: a sentence in UTF-8.
struct CellFault {
    std::string text;
};
/// The field's text that a cell stands for, the only judge of cells: takes the blanks and tabs around a
/// number away, says what is wrong with the rest, and writes it as the project keeps it. An empty cell is
/// what opening a file makes of a value that is missing there.
/// \param utf8 the cell
std::variant<std::string, CellFault> cellText(const Field& field, std::string_view utf8);
/// Whether a cell is byte for byte what the project holds, or the same number: then it is no change, however
/// odd it is.
bool isEquivalent(const Field& field, std::string_view utf8, std::string_view stored);

} // namespace orvista
