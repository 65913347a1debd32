#pragma once

#include "model/Change.h"
#include "model/Item.h"
#include "model/Project.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Messages or variables that were copied, as bytes for the clipboard.
///
/// A line "orvista-items 1" (the number is the form's version), ending in LF, then texts, each as its length
/// in decimal, a colon and its bytes: the folder of the project, how many items, and of each its name and its
/// texts as fieldsOf() lists them: the script of a message; default, width and precision of a float variable;
/// default, on and off of a Boolean one.
namespace orvista {

/// How clipboards name the form.
inline constexpr const char* copiedItemsType = "application/x-orvista-items";

struct CopiedItem {
    Item item;
    std::vector<std::string> texts; ///< of its fields, in their order
    bool operator==(const CopiedItem&) const = default;
};

struct CopiedItems {
    std::string folder;            ///< of the project they come from; UTF-8
    std::vector<CopiedItem> items; ///< all messages or all variables, at least one, each once
    bool operator==(const CopiedItems&) const = default;
};

/// \param items messages, or variables
CopiedItems copiedItems(const Project& project, std::span<const Item> items);

std::string copiedBytes(const CopiedItems& copied);

enum class CopyFault {
    NotItems,    ///< something else, or not whole
    NewerVersion ///< of a program that knows more
};
std::variant<CopiedItems, CopyFault> readCopied(std::string_view bytes);

/// Where copied items go: one onto each of the selected places, several onto the first selected one and on.
/// Names stay with their places.
struct Pasted {
    std::vector<Change> changes; ///< none where the places hold all that already
    std::string refusal;         ///< why nothing is pasted, as a sentence; empty where something is
};
/// \param selected places of the project, in the order in which they are shown
/// \param onwards the first of them and all that are shown below it
Pasted pasteOnto(const Project& project, const CopiedItems& copied, std::span<const Item> selected,
                 std::span<const Item> onwards);

/// What makes the items hold what they hold in a new project.
std::vector<Change> clearedItems(const Project& project, std::span<const Item> items);

} // namespace orvista
