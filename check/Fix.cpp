#include "check/Fix.h"

#include "script/ScriptText.h"

#include <algorithm>

namespace orvista {

namespace {

/// An edit of a script by its bytes.
struct Stretch {
    std::size_t first = 0;
    std::size_t length = 0;
    std::string_view text;
};

std::vector<Stretch> stretchesOf(const ScriptText& lines, const Fix& fix, Item message) {
    std::vector<Stretch> stretches;
    for (const FixEdit& edit : fix.edits)
        if (edit.item == message && edit.field == nullptr)
            stretches.push_back({lines.start(edit.line) + edit.column - 1, edit.length, edit.text});
    std::ranges::sort(stretches, {}, &Stretch::first);
    return stretches;
}

Change scriptChange(const Project& project, const Fix& fix, Item message) {
    const std::string& script = scriptOf(project, message);
    std::string fixed;
    std::size_t taken = 0;
    for (const Stretch& stretch : stretchesOf(ScriptText(script), fix, message)) {
        fixed.append(script, taken, stretch.first - taken).append(stretch.text);
        taken = stretch.first + stretch.length;
    }
    fixed.append(script, taken);
    return trimmed({message, &scriptField(), script, std::move(fixed)});
}

std::size_t lineEndsIn(std::string_view text) {
    if (text.empty())
        return 0;
    const bool endsALine = text.ends_with('\n') || text.ends_with('\r');
    return ScriptText(text).count() - (endsALine ? 0 : 1);
}

} // namespace

std::vector<Change> changesOf(const Project& project, const Fix& fix) {
    std::vector<Change> changes;
    std::vector<Item> messages;
    for (const FixEdit& edit : fix.edits) {
        if (edit.field != nullptr)
            changes.push_back({edit.item, edit.field, textOf(project, edit.item, *edit.field), edit.text});
        else if (std::ranges::find(messages, edit.item) == messages.end())
            messages.push_back(edit.item);
    }
    for (const Item message : messages)
        changes.push_back(scriptChange(project, fix, message));
    return changes;
}

std::optional<std::size_t> lineAfter(const Project& project, const Fix& fix, Item message, std::size_t line) {
    if (line == 0)
        return line;
    const std::string_view script = scriptOf(project, message);
    const ScriptText lines(script);
    std::size_t after = line;
    for (const Stretch& stretch : stretchesOf(lines, fix, message)) {
        const bool takesLine = stretch.first <= lines.start(line) &&
                               stretch.first + stretch.length >= lines.start(line) + lines.line(line).size();
        if (takesLine && stretch.text.empty())
            return std::nullopt;
        if (stretch.first + stretch.length > lines.start(line))
            break;
        after += lineEndsIn(stretch.text);
        after -= lineEndsIn(script.substr(stretch.first, stretch.length));
    }
    return after;
}

} // namespace orvista
