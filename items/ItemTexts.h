#pragma once

#include "display/FieldFormats.h"
#include "link/ModbusReader.h"
#include "model/Item.h"
#include "model/Project.h"

#include <array>
#include <cstddef>
#include <string>

namespace orvista {

/// What a display's items say to people, for a project as it is when this is made. All texts are UTF-8.
class ItemTexts {
public:
    explicit ItemTexts(const Project& project);

    /// A message's first text, with "%5v" where a variable stands; empty when it draws none.
    const std::string& message(Item message) const;
    /// As the display writes it, its blanks in front left out.
    std::string floatVariable(std::size_t index, float value) const;
    /// The text for that state.
    std::string booleanVariable(std::size_t index, bool on) const;
    /// One of the three, by what the display holds for the item.
    std::string of(const DisplayItem& item) const;

private:
    FieldFormats formats_;
    std::array<std::string, messageCount> messages_; ///< by messagePosition()
};

} // namespace orvista
