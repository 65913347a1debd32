#pragma once

#include "model/ItemState.h"
#include "model/Project.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Messages or variables that were copied, as bytes for the clipboard.
///
/// A line "orvista-items 1" (the number is the form's version), ending in LF, then texts, each as its length
/// in decimal, a colon and its bytes: the folder of the project, how many items, and of each its name and its
/// texts: the script of a message; default, width and precision of a float variable; default, on and off of a
/// Boolean one.
namespace orvista {

/// How clipboards name the form.
inline constexpr const char* copiedItemsType = "application/x-orvista-items";

struct CopiedItems {
    std::string folder;           ///< of the project they come from; UTF-8
    std::vector<ItemState> items; ///< all messages or all variables, at least one, each once
    bool operator==(const CopiedItems&) const = default;
};

/// \param names of messages, or of variables
/// \throws std::out_of_range when there is no item of one of the names
CopiedItems copiedItems(const Project& project, const std::vector<std::string>& names);

std::string copiedBytes(const CopiedItems& copied);

enum class CopyFault {
    NotItems,    ///< something else, or not whole
    NewerVersion ///< of a program that knows more
};
std::variant<CopiedItems, CopyFault> readCopied(std::string_view bytes);

/// Where copied items go: one onto each of the selected places, several onto the first selected one and on.
/// Names stay with their places.
struct Pasted {
    std::vector<ItemState> items; ///< what the places are to hold
    std::string refusal;          ///< why nothing is pasted, as a sentence; empty where something is
};
/// \param selected the names of the selected places, in the order in which they are shown
/// \param onwards the first of them and all that are shown below it
Pasted pasteOnto(const CopiedItems& copied, const std::vector<std::string>& selected,
                 const std::vector<std::string>& onwards);

/// What the items hold in a new project.
std::vector<ItemState> clearedItems(const std::vector<std::string>& names);

} // namespace orvista
