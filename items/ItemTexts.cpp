#include "items/ItemTexts.h"

#include "items/PageContent.h"
#include "model/Text.h"
#include "model/Windows1252.h"
#include "script/ScriptInterpreter.h"

namespace orvista {

ItemTexts::ItemTexts(const Project& project) : formats_(fieldFormats(project)) {
    for (const Item message : allMessages())
        messages_[messagePosition(message)] =
            utf8FromWindows1252(firstText(interpretScript(scriptOf(project, message)), formats_));
}

const std::string& ItemTexts::message(Item message) const {
    return messages_.at(messagePosition(message));
}

std::string ItemTexts::floatVariable(std::size_t index, float value) const {
    return std::string(trimBlanks(floatFieldText(value, formats_.floats.at(index))));
}

std::string ItemTexts::booleanVariable(std::size_t index, bool on) const {
    const BooleanTexts& texts = formats_.booleans.at(index);
    return utf8FromWindows1252(on ? texts.on : texts.off);
}

std::string ItemTexts::of(const DisplayItem& item) const {
    if (item.isFloat())
        return floatVariable(item.item.index, item.value());
    return item.isMessage() ? message(item.item) : booleanVariable(item.item.index, item.isOn());
}

} // namespace orvista
