#pragma once

#include "script/ScriptPage.h"

#include <span>
#include <vector>

namespace orvista {

/// A live value that pages show.
struct ShownField {
    LiveValue value = LiveValue::Float;
    std::size_t index = 0; ///< of the variable, from 0; 0 for time and date
    bool operator==(const ShownField&) const = default;
};

/// What pages show, each once, in the order in which it is drawn first.
std::vector<ShownField> fieldsShown(std::span<const ScriptPage> pages);

} // namespace orvista
