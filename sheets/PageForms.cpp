#include "sheets/PageForms.h"

#include "items/PageContent.h"
#include "model/Lines.h"
#include "model/Numbers.h"
#include "model/Text.h"
#include "model/Windows1252.h"
#include "script/ScriptLines.h"
#include "script/WizardLists.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

std::size_t colourPosition(Led led) {
    switch (led) {
    case Led::Red:
        return 0;
    case Led::Green:
        return 1;
    case Led::Orange:
        return 2;
    case Led::Off:
        break;
    }
    return 3;
}

/// In the wizard's list: Boolean variables, float variables, DATE, TIME.
std::size_t sourcePosition(const FieldElement& field) {
    switch (field.value) {
    case LiveValue::Boolean:
        return field.index;
    case LiveValue::Float:
        return booleanVariableCount + field.index;
    case LiveValue::Date:
        return booleanVariableCount + floatVariableCount;
    case LiveValue::Time:
        break;
    }
    return booleanVariableCount + floatVariableCount + 1;
}

std::size_t effectPosition(Effect effect) {
    switch (effect) {
    case Effect::Left:
        return 1;
    case Effect::Right:
        return 2;
    case Effect::Up:
        return 3;
    case Effect::Down:
        return 4;
    case Effect::Fade:
        break;
    }
    return 5;
}

/// Where a list writes that number; nothing where it does not.
template <typename Items>
std::optional<std::size_t> numberPosition(const Items& items, int number) {
    const auto found = std::ranges::find(items, decimalText(number), &wizard::Item::script);
    if (found == items.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - items.begin());
}

/// Reads one page. What it takes more loosely than the wizard writes does not say the same once it is built.
class FormReader {
public:
    FormReader(const ScriptPage& page, const FieldFormats& formats) : page_(page), formats_(formats) {
        form_.cbInEffect = form_.cbOutEffect = 0;
    }

    std::optional<MessageForm> read() {
        if (page_.elements.empty() && page_.steps.empty())
            return MessageForm{};
        if (!readContent() ||
            !std::ranges::all_of(page_.steps, [this](const auto& s) { return readStep(s); }))
            return std::nullopt;
        return form_;
    }

private:
    bool readContent() {
        if (page_.elements.empty() || page_.elements.size() > 1 + fieldSlotCount)
            return false;
        if (const auto* image = std::get_if<ImageElement>(&page_.elements.front())) {
            form_.bitmap = true;
            form_.txtPath = utf8FromWindows1252(image->name);
            readColours(image->placement, form_.cbFgClr, form_.cbBgClr);
            return page_.elements.size() == 1;
        }
        const auto* text = std::get_if<TextElement>(&page_.elements.front());
        if (text == nullptr || text->text.empty())
            return false;
        form_.txtText = contentText(page_, *text, formats_);
        form_.cbFont = text->font == LedFont::Small5x7 ? 0 : 1;
        readColours(text->placement, form_.cbFgClr, form_.cbBgClr);
        return readFields();
    }

    bool readFields() {
        for (std::size_t slot = 0; slot + 1 < page_.elements.size(); ++slot) {
            const auto* field = std::get_if<FieldElement>(&page_.elements[slot + 1]);
            if (field == nullptr)
                return false;
            form_.fields[slot].cbVar = sourcePosition(*field);
            readColours(field->placement, form_.fields[slot].cbVarFgClr, form_.fields[slot].cbVarBgClr);
        }
        return true;
    }

    static void readColours(const Placement& placement, std::size_t& foreground, std::size_t& background) {
        foreground = colourPosition(placement.foreground);
        background = colourPosition(placement.background);
    }

    bool readStep(const ScriptStep& step) {
        switch (step.kind) {
        case StepKind::Enter:
            return readEffect(step, form_.cbInEffect, form_.cbIFSpeed);
        case StepKind::Leave:
            return readEffect(step, form_.cbOutEffect, form_.cbOFSpeed);
        case StepKind::Blink:
            form_.cbSpEffect = 1;
            return true;
        case StepKind::Still:
            break;
        }
        if (form_.cbSpEffect == 1) // its second line
            return true;
        return assign(form_.cbDelay, numberPosition(wizard::delays, step.milliseconds));
    }

    static bool readEffect(const ScriptStep& step, std::size_t& effect, std::size_t& speed) {
        effect = effectPosition(step.effect);
        return assign(speed, numberPosition(wizard::speeds, step.milliseconds));
    }

    static bool assign(std::size_t& position, std::optional<std::size_t> found) {
        position = found.value_or(position);
        return found.has_value();
    }

    const ScriptPage& page_;
    const FieldFormats& formats_;
    MessageForm form_;
};

} // namespace

std::string builtScript(std::span<const MessageForm> forms) {
    std::string script;
    for (const MessageForm& form : forms) {
        if (&form != forms.data())
            script.append(lineEnd);
        // The rules that know both separators: the same sheet gives the same script on every system.
        script.append(BuildPartialScript(form, PathRules::windows()));
    }
    return script;
}

std::optional<std::vector<MessageForm>> pageForms(std::string_view script, const FieldFormats& formats) {
    const InterpretedScript interpreted = interpretScript(script);
    if (!interpreted.remarks.empty())
        return std::nullopt;
    const auto isEmpty = [](const ScriptPage& page) { return page.elements.empty() && page.steps.empty(); };
    std::span<const ScriptPage> pages(interpreted.pages);
    while (pages.size() > 1 && isEmpty(pages.front()))
        pages = pages.subspan(1);
    std::vector<MessageForm> forms;
    for (const ScriptPage& page : pages) {
        auto form = FormReader(page, formats).read();
        if (!form)
            return std::nullopt;
        forms.push_back(std::move(*form));
    }
    if (forms.empty() || !equivalent(builtScript(forms), script, EmptyStart::IsLeftOut))
        return std::nullopt;
    return forms;
}

} // namespace orvista
