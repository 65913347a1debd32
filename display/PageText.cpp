#include "display/PageText.h"

#include <variant>

namespace orvista {

std::string fieldText(const FieldElement& field, const FieldFormats& formats, const DisplayValues& values) {
    switch (field.value) {
    case LiveValue::Float:
        return floatFieldText(values.floats[field.index], formats.floats[field.index]);
    case LiveValue::Boolean:
        return booleanFieldText(values.booleans[field.index], formats.booleans[field.index]);
    case LiveValue::Time:
        return timeFieldText(values.clock);
    case LiveValue::Date:
        return dateFieldText(values.clock);
    }
    return {};
}

std::string pageText(const ScriptPage& page, const FieldFormats& formats, const DisplayValues& values) {
    std::string text;
    for (const ScriptElement& element : page.elements) {
        if (!text.empty())
            text += ' ';
        if (const auto* drawn = std::get_if<TextElement>(&element))
            text += drawn->text;
        else if (const auto* field = std::get_if<FieldElement>(&element))
            text += fieldText(*field, formats, values);
        else
            text += std::get<ImageElement>(element).name;
    }
    return text;
}

} // namespace orvista
