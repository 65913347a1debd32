#pragma once

#include "script/ScriptPage.h"

#include <algorithm>
#include <cstddef>
#include <variant>
#include <vector>

namespace orvista {

/// A live value that pages show.
struct ShownField {
    LiveValue value = LiveValue::Float;
    std::size_t index = 0; ///< of the variable, from 0; 0 for time and date
    bool operator==(const ShownField&) const = default;
};

/// What pages show, each once, in the order in which it is drawn first.
/// \param pages ScriptPages, or what is made of them
std::vector<ShownField> fieldsShown(const auto& pages) {
    std::vector<ShownField> fields;
    for (const ScriptPage& page : pages)
        for (const ScriptElement& element : page.elements)
            if (const auto* const drawn = std::get_if<FieldElement>(&element)) {
                const ShownField field{drawn->value, drawn->index};
                if (std::ranges::find(fields, field) == fields.end())
                    fields.push_back(field);
            }
    return fields;
}

} // namespace orvista
