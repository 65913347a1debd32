#include "compare/ScriptComparison.h"

#include "compare/LineMatching.h"
#include "script/ScriptLines.h"

namespace orvista {

namespace {

struct Line {
    std::string text;
    std::size_t number; ///< from 1, empty lines counted
};

std::vector<Line> linesOf(std::string_view script) {
    ScriptLines counted(script);
    std::vector<Line> lines;
    for (std::string_view line = counted.next(); !line.empty(); line = counted.next())
        lines.push_back({std::string(line), counted.number()});
    return lines;
}

std::vector<std::string_view> lineTexts(const std::vector<Line>& lines) {
    std::vector<std::string_view> texts;
    texts.reserve(lines.size());
    for (const Line& line : lines)
        texts.push_back(line.text);
    return texts;
}

} // namespace

std::vector<ComparedLine> comparedLines(std::string_view before, std::string_view after) {
    using Kind = ComparedLine::Kind;
    const std::vector<Line> left = linesOf(before);
    const std::vector<Line> right = linesOf(after);
    const auto partners = matchLines(lineTexts(left), lineTexts(right));
    std::vector<ComparedLine> lines;
    std::size_t l = 0;
    std::size_t r = 0;
    const auto changeUpTo = [&](std::size_t endOfLeft, std::size_t endOfRight) {
        for (; l < endOfLeft; ++l)
            lines.push_back({Kind::Removed, left[l].text, left[l].number, 0});
        for (; r < endOfRight; ++r)
            lines.push_back({Kind::Added, right[r].text, 0, right[r].number});
    };
    for (std::size_t next = 0; next < right.size(); ++next) {
        if (!partners[next])
            continue;
        changeUpTo(*partners[next], next);
        lines.push_back({Kind::Same, left[l].text, left[l].number, right[r].number});
        ++l;
        ++r;
    }
    changeUpTo(left.size(), right.size());
    return lines;
}

} // namespace orvista
