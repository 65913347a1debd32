#include "script/ShownFields.h"

#include <algorithm>
#include <variant>

namespace orvista {

std::vector<ShownField> fieldsShown(std::span<const ScriptPage> pages) {
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
