#include "widgets/ScriptPositions.h"

#include "widgets/DeviceText.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

constexpr QChar shownCarriageReturn = u'\u240D';
constexpr QChar shownLineFeed = u'\u240A';

/// Behind the line end that `text` has at `at`; `at` itself where there is none.
qsizetype behindLineEnd(const QString& text, qsizetype at) {
    if (text[at] == shownLineFeed)
        return at + 1;
    if (text[at] != shownCarriageReturn)
        return at;
    return at + (text.mid(at + 1, 1) == shownLineFeed ? 2 : 1);
}

} // namespace

ScriptPositions::ScriptPositions(const QTextDocument& document) {
    std::size_t line = 1;
    std::size_t column = 1;
    stretches_.reserve(static_cast<std::size_t>(document.blockCount()));
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString text = block.text();
        const bool goesOn = text.endsWith(continuationMark);
        const qsizetype length = text.size() - (goesOn ? 1 : 0);
        qsizetype from = 0;
        const auto note = [&](qsizetype end) {
            stretches_.push_back({line, column, block.position() + static_cast<int>(from),
                                  block.position() + static_cast<int>(end)});
        };
        for (qsizetype at = from; at < length;) {
            const qsizetype next = behindLineEnd(text, at);
            if (next > at) {
                note(at);
                ++line;
                column = 1;
                from = next;
            }
            at = std::max(next, at + 1);
        }
        note(length);
        if (goesOn) {
            column += static_cast<std::size_t>(length - from);
        } else {
            ++line;
            column = 1;
        }
    }
}

std::size_t ScriptPositions::lineAt(int position) const {
    const auto behind =
        std::upper_bound(stretches_.begin(), stretches_.end(), position,
                         [](int wanted, const Stretch& stretch) { return wanted < stretch.position; });
    return behind == stretches_.begin() ? 1 : std::prev(behind)->line;
}

std::vector<ScriptPositions::Stretch>::const_iterator ScriptPositions::stretchOf(std::size_t line,
                                                                                 std::size_t column) const {
    const auto behind = std::upper_bound(stretches_.begin(), stretches_.end(), std::pair(line, column),
                                         [](const auto& wanted, const Stretch& stretch) {
                                             return wanted < std::pair(stretch.line, stretch.column);
                                         });
    return behind == stretches_.begin() ? behind : std::prev(behind);
}

int ScriptPositions::positionOf(std::size_t line, std::size_t column) const {
    if (stretches_.empty())
        return 0;
    const Stretch& stretch = *stretchOf(line, column);
    if (stretch.line != line)
        return stretch.line < line ? stretch.end : stretch.position;
    const auto length = static_cast<std::size_t>(stretch.end - stretch.position);
    return stretch.position +
           static_cast<int>(std::min(std::max(column, stretch.column) - stretch.column, length));
}

int ScriptPositions::endOfLine(std::size_t line) const {
    return positionOf(line, static_cast<std::size_t>(-1));
}

} // namespace orvista
