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

/// Where the entry stands that means `value`.
template <typename List, typename Member, typename Value>
std::optional<std::size_t> positionIn(const List& list, Member member, const Value& value) {
    const auto found = std::ranges::find(list, value, member);
    return found == list.end() ? std::nullopt : std::optional<std::size_t>(found - list.begin());
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
        form_.cbFont = positionIn(fontStyles, &FontStyle::font, text->font).value();
        readColours(text->placement, form_.cbFgClr, form_.cbBgClr);
        return readFields();
    }

    bool readFields() {
        for (std::size_t slot = 0; slot + 1 < page_.elements.size(); ++slot) {
            const auto* field = std::get_if<FieldElement>(&page_.elements[slot + 1]);
            if (field == nullptr)
                return false;
            form_.fields[slot].cbVar = wizard::fieldSourcePosition(field->value, field->index);
            readColours(field->placement, form_.fields[slot].cbVarFgClr, form_.fields[slot].cbVarBgClr);
        }
        return true;
    }

    static void readColours(const Placement& placement, std::size_t& foreground, std::size_t& background) {
        foreground = positionIn(colourStyles, &ColourStyle::led, placement.foreground).value();
        background = positionIn(colourStyles, &ColourStyle::led, placement.background).value();
    }

    bool readStep(const ScriptStep& step) {
        switch (step.kind) {
        case StepKind::Enter:
            return readEffect(step, form_.cbInEffect, form_.cbIFSpeed);
        case StepKind::Leave:
            return readEffect(step, form_.cbOutEffect, form_.cbOFSpeed);
        case StepKind::Blink:
            form_.cbSpEffect = positionIn(actStyles, &ActStyle::act, StepKind::Blink).value();
            return true;
        case StepKind::Still:
            break;
        }
        if (actStyles[form_.cbSpEffect].act == StepKind::Blink) // its second line
            return true;
        return readNumber(form_.cbDelay, wizard::delays, step);
    }

    static bool readEffect(const ScriptStep& step, std::size_t& effect, std::size_t& speed) {
        effect = positionIn(wizard::effects, &wizard::EffectChoice::style, &styleOf(step.effect)).value();
        return readNumber(speed, wizard::speeds, step);
    }

    /// False where the list does not write the step's milliseconds.
    static bool readNumber(std::size_t& position, const auto& list, const ScriptStep& step) {
        const auto found = positionIn(list, &wizard::NumberChoice::script, decimalText(step.milliseconds));
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
