#pragma once

#include "items/MessageDigest.h"
#include "items/TextSearch.h"
#include "model/Item.h"
#include "model/Project.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the tables of messages and variables in the window say, a row for each item. All texts are UTF-8.
namespace orvista {

struct MessageRow {
    Item item;
    std::int64_t address = 0;
    std::string reference;
    /// False while the message was not read; what follows is empty then.
    bool isRead = false;
    bool drawsSomething = false;
    std::size_t pages = 0;
    std::string text;
    std::string variables; ///< "RegVar2 RegVar3 CoilVar1"
    std::string bitmaps;   ///< "arrow.bmp, tank.bmp"
};

struct VariableRow {
    Item item;
    std::int64_t address = 0;
    std::string reference;
    std::string defaultValue;
    std::string format; ///< width and precision of a float ("7.3"), the two texts of a Boolean ("OFF/ON")
    std::string usedBy; ///< "STDMSG4 ALTMSG2"
};

/// The 60 messages by position.
std::vector<MessageRow> messageRows(const Project& project, const MessageDigests& messages);
/// Whether the text stands in the name, the first text or the script.
bool messageHas(const TextSearch& search, const MessageRow& row, std::string_view script);
/// The 64 float variables, then the 32 Boolean ones.
std::vector<VariableRow> variableRows(const Project& project, const MessageDigests& messages);

} // namespace orvista
