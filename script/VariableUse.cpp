#include "script/VariableUse.h"

#include <variant>

namespace orvista {

VariableUse variablesShown(const ScriptPage& page) {
    VariableUse use;
    for (const ScriptElement& element : page.elements) {
        const auto* field = std::get_if<FieldElement>(&element);
        if (field != nullptr && field->value == LiveValue::Float)
            use.floats.set(field->index);
        else if (field != nullptr && field->value == LiveValue::Boolean)
            use.booleans.set(field->index);
    }
    return use;
}

VariableUse variablesShown(const std::vector<ScriptPage>& pages) {
    VariableUse use;
    for (const ScriptPage& page : pages)
        use |= variablesShown(page);
    return use;
}

} // namespace orvista
