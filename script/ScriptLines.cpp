#include "script/ScriptLines.h"

#include "model/Project.h"
#include "model/Text.h"

#include <string>
#include <vector>

namespace orvista {

namespace {

std::vector<std::string> linesOf(std::string_view script, EmptyStart start) {
    ScriptLines lines(script);
    std::vector<std::string> all;
    for (std::string_view line = lines.next(); !line.empty(); line = lines.next()) {
        const bool beginsAnew = all.size() == 1 && all.front() == clearScript && line == clearScript;
        if (start == EmptyStart::Counts || !beginsAnew)
            all.emplace_back(line);
    }
    return all;
}

} // namespace

ScriptLines::ScriptLines(std::string_view script)
    : source_(script.empty() ? clearScript : script), reader_(source_) {}

std::string_view ScriptLines::next() {
    std::string_view line;
    while (reader_.next(line)) {
        ++number_;
        if (const std::string_view words = trimBlanks(line); !words.empty())
            return words;
    }
    return {};
}

std::string linesThatCount(std::string_view script) {
    ScriptLines lines(script);
    std::string text;
    for (std::string_view line = lines.next(); !line.empty(); line = lines.next())
        text.append(line).append(lineEnd);
    return text;
}

bool equivalent(std::string_view script, std::string_view other, EmptyStart start) {
    return script == other || linesOf(script, start) == linesOf(other, start);
}

} // namespace orvista
