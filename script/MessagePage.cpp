#include "script/MessagePage.h"

#include "model/Lines.h"
#include "model/Project.h"
#include "model/Windows1252.h"
#include "script/Places.h"
#include "script/WizardLists.h"

namespace orvista {

namespace {

/// Foreground, a blank, background.
std::string colourPair(std::size_t foreground, std::size_t background) {
    return std::string(colourStyles.at(foreground).shown)
        .append(" ")
        .append(colourStyles.at(background).shown);
}

bool appendBitmap(std::string& page, const MessageForm& form, const PathRules& paths) {
    const auto name = bitmapName(paths, form.txtPath);
    if (form.txtPath.empty() || !name)
        return false;
    page.append("IMG 0 0 ").append(colourPair(form.cbFgClr, form.cbBgClr)).append(" ").append(*name);
    return true;
}

void appendField(std::string& page, const FieldChoice& field, std::size_t column, const FontStyle& font) {
    const wizard::FieldSource& source = wizard::fieldSources().at(field.cbVar);
    const bool clock = isClock(source.value);
    page.append(lineEnd).append(clock ? source.shown : "DISPVAR").append(font.commandSuffix).append(" ");
    page.append(std::to_string(column * static_cast<std::size_t>(font.cellWidth))).append(" ");
    page.append(std::to_string(font.row)).append(" ");
    page.append(colourPair(field.cbVarFgClr, field.cbVarBgClr)).append(" ");
    if (!clock) // a clock field ends with the blank
        page.append(source.shown);
}

bool appendText(std::string& page, const MessageForm& form) {
    if (form.txtText.empty())
        return false;
    const FontStyle& font = fontStyles.at(form.cbFont);
    const PlaceholderScan content = scanPlaceholders(form.txtText);
    page.append("TEXT").append(font.commandSuffix).append(" 0 ").append(std::to_string(font.row)).append(" ");
    page.append(colourPair(form.cbFgClr, form.cbBgClr))
        .append(" \"")
        .append(content.DisplayText)
        .append("\"");
    for (std::size_t slot = 0; slot < content.fieldCount(); ++slot) {
        const auto typed = static_cast<std::size_t>(content.VarPos[slot]);
        const std::size_t column = form.isOfMaster ? shownColumn(content.DisplayText, typed) : typed;
        appendField(page, form.fields[slot], column, font);
    }
    return true;
}

/// `direction` is "IN " or "OUT ".
void appendEffect(std::string& page, std::string_view direction, std::size_t effect, std::size_t speed) {
    const EffectStyle* const style = wizard::effects.at(effect).style;
    if (style == nullptr)
        return;
    page.append(lineEnd).append(direction).append(style->shown).append(" ");
    page.append(style->effect == Effect::Fade ? "" : "1 ").append(wizard::speeds.at(speed).script);
}

void appendSpecialEffect(std::string& page, const MessageForm& form) {
    const ActStyle& style = actStyles.at(form.cbSpEffect);
    page.append(lineEnd).append("ACT ").append(style.shown).append(" ");
    if (style.act == StepKind::Still)
        page.append(wizard::delays.at(form.cbDelay).script);
    else
        page.append("4 75").append(lineEnd).append("ACT STILL 500");
}

} // namespace

std::optional<std::string> bitmapName(const PathRules& paths, std::string_view path) {
    const auto parts = paths.split(path);
    auto name = windows1252FromUtf8(parts ? std::string_view(parts->name) : path);
    if (name && name->find_first_of(lineEnd) != std::string::npos)
        return std::nullopt;
    return name;
}

std::string BuildPartialScript(const MessageForm& form, const PathRules& paths) {
    std::string page = std::string(clearScript).append(lineEnd);
    const bool hasContent = form.bitmap ? appendBitmap(page, form, paths) : appendText(page, form);
    if (!hasContent)
        return page;
    appendEffect(page, "IN ", form.cbInEffect, form.cbIFSpeed);
    appendSpecialEffect(page, form);
    appendEffect(page, "OUT ", form.cbOutEffect, form.cbOFSpeed);
    return page;
}

} // namespace orvista
