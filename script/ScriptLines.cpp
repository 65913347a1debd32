#include "script/ScriptLines.h"

#include "model/Project.h"
#include "model/Text.h"

#include <string>

namespace orvista {

namespace {

class ComparedLines {
public:
    ComparedLines(std::string_view script, EmptyStart start) : lines_(script), start_(start) {}

    std::string_view next() {
        std::string_view line = lines_.next();
        while (isEmptyStart_ && line == clearScript)
            line = lines_.next();
        isEmptyStart_ = isFirst_ && start_ == EmptyStart::IsLeftOut && line == clearScript;
        isFirst_ = false;
        return line;
    }

private:
    ScriptLines lines_;
    EmptyStart start_;
    bool isFirst_ = true;
    bool isEmptyStart_ = false; ///< only the first CLEAR has come, and it stands for those after it
};

bool haveEqualLines(std::string_view script, std::string_view other, EmptyStart start) {
    ComparedLines lines(script, start);
    ComparedLines otherLines(other, start);
    while (true) {
        const std::string_view line = lines.next();
        if (line != otherLines.next())
            return false;
        if (line.empty())
            return true;
    }
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
    return script == other || haveEqualLines(script, other, start);
}

} // namespace orvista
