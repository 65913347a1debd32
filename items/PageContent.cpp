#include "items/PageContent.h"

#include "display/LedFont.h"
#include "display/PageLayout.h"
#include "model/Numbers.h"
#include "script/PlaceholderScan.h"

#include <algorithm>
#include <map>
#include <optional>

namespace orvista {

namespace {

/// The column of the text at which the field begins.
std::optional<std::size_t> columnIn(const TextElement& text, const FieldElement& field) {
    const int distance = field.placement.x - text.placement.x;
    const int width = cellWidth(text.font);
    const bool inRow = field.font == text.font && field.placement.y == text.placement.y;
    if (!inRow || distance < 0 || distance % width != 0)
        return std::nullopt;
    const auto column = static_cast<std::size_t>(distance / width);
    return column <= lastFieldColumn ? std::optional(column) : std::nullopt;
}

/// How many blanks there are from `column` on, `most` at most.
std::size_t blanksFrom(std::string_view text, std::size_t column, std::size_t most) {
    const std::string_view rest = text.substr(std::min(column, text.size()), most);
    return std::min(rest.find_first_not_of(' '), rest.size());
}

} // namespace

std::string contentText(const ScriptPage& page, const TextElement& text, const FieldFormats& formats) {
    std::map<std::size_t, std::size_t> shownWidths; // by column
    for (const ScriptElement& element : page.elements)
        if (const auto* field = std::get_if<FieldElement>(&element))
            if (const auto column = columnIn(text, *field))
                shownWidths.try_emplace(*column, static_cast<std::size_t>(shownWidth(*field, formats)));

    std::string content;
    std::size_t taken = 0;
    const auto copyUntil = [&](std::size_t column) {
        const auto rest =
            std::string_view(text.text).substr(std::min(taken, text.text.size()), column - taken);
        content.append(rest).append(column - taken - rest.size(), ' ');
    };
    for (auto field = shownWidths.begin(); field != shownWidths.end(); ++field) {
        const auto& [column, shown] = *field;
        const auto next = std::next(field);
        const std::size_t space = next == shownWidths.end() ? shown : std::min(shown, next->first - column);
        const std::size_t width = std::max<std::size_t>(blanksFrom(text.text, column, space), 1);
        copyUntil(column);
        content.append("%").append(decimalText(width)).append("v");
        taken = column + width;
    }
    copyUntil(std::max(taken, text.text.size()));
    return content;
}

std::string firstText(const InterpretedScript& script, const FieldFormats& formats) {
    for (const ScriptPage& page : script.pages)
        for (const ScriptElement& element : page.elements)
            if (const auto* text = std::get_if<TextElement>(&element))
                return contentText(page, *text, formats);
    return {};
}

} // namespace orvista
