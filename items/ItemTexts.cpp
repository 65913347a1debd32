#include "items/ItemTexts.h"

#include "items/PageContent.h"
#include "model/Text.h"
#include "model/Windows1252.h"
#include "script/ScriptInterpreter.h"

namespace orvista {

ItemTexts::ItemTexts(const Project& project) : formats_(fieldFormats(project)) {
    const auto read = [this](const auto& scripts, auto& texts) {
        for (std::size_t i = 0; i < scripts.size(); ++i)
            texts[i] = utf8FromWindows1252(firstText(interpretScript(scripts[i]), formats_));
    };
    read(project.STDMSG, regular_);
    read(project.ALTMSG, emergency_);
}

const std::string& ItemTexts::message(const ItemKind& kind, std::size_t index) const {
    return &kind == &emergencyMessages ? emergency_.at(index) : regular_.at(index);
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
        return floatVariable(item.index, item.value());
    return item.isMessage() ? message(*item.kind, item.index) : booleanVariable(item.index, item.isOn());
}

} // namespace orvista
