#pragma once

#include <cstddef>
#include <vector>

class QTextDocument;

namespace orvista {

/// Where the lines of a script stand in the box that shows it: a line of the script that is too long for one
/// line of the box goes on in the next, and a lone CR or LF within a line of the box ends one of the script.
class ScriptPositions {
public:
    ScriptPositions() = default;
    /// Of the text that the document holds now, as shownScript() made it.
    explicit ScriptPositions(const QTextDocument& document);

    /// How many lines the script has; an empty one has one.
    std::size_t lineCount() const { return stretches_.empty() ? 0 : stretches_.back().line; }
    /// The line, from 1, that a position of the document belongs to.
    std::size_t lineAt(int position) const;
    /// The position of a byte, counted from 1, of a line; that of the line's end for one after it, of the
    /// text's end for a line that is not there.
    int positionOf(std::size_t line, std::size_t column) const;
    int endOfLine(std::size_t line) const;

private:
    /// A stretch of a line without a break of the box in it.
    struct Stretch {
        std::size_t line;
        std::size_t column; ///< of its first byte
        int position;
        int end;
    };

    std::vector<Stretch>::const_iterator stretchOf(std::size_t line, std::size_t column) const;

    std::vector<Stretch> stretches_; ///< in order
};

} // namespace orvista
