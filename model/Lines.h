#pragma once

#include "model/Bytes.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

inline constexpr std::string_view lineEnd = "\r\n";
inline constexpr std::string_view utf8ByteOrderMark = "\xEF\xBB\xBF";

/// Splits a source into lines. CR LF, LF alone and CR alone all end a line, a last line without an end
/// counts, and an UTF-8 byte-order mark at the start is skipped. NUL and Ctrl-Z are ordinary characters.
class LineReader {
public:
    explicit LineReader(ByteSource& source);
    /// False at the end of the source. `line` has no line end.
    /// \throws ReadFailure
    bool next(std::string& line);
    /// The same without a copy of its own: `line` holds until the next call.
    bool next(std::string_view& line);
    /// Of the line that next() gave last, from 1.
    std::size_t number() const { return number_; }
    bool skippedMark() const { return skippedMark_; }

private:
    bool fill();
    void skipByteOrderMark();
    /// Where the next line end of the buffer stands; its size when it holds none.
    std::size_t endOfLine();

    ByteSource& source_;
    std::vector<char> buffer_;    ///< empty when the source is in memory
    const char* bytes_ = nullptr; ///< the buffer's, or the source's own
    std::string joined_;          ///< a line that did not fit into the buffer at once
    std::size_t position_ = 0;
    std::size_t size_ = 0;
    std::optional<std::size_t> carriageReturn_;
    std::optional<std::size_t> lineFeed_;
    std::size_t number_ = 0;
    bool atStart_ = true;
    bool skippedMark_ = false;
    bool lastWasCarriageReturn_ = false;
};

/// CR LF, LF and CR alone all become CR LF.
std::string withWholeLineEnds(std::string_view text);
/// Whether that changes the text.
bool hasLoneLineEnd(std::string_view text);
/// The first line, from 1, that is not the same in both; the one after the last line where all are.
std::size_t firstDifferentLine(std::string_view one, std::string_view other);

} // namespace orvista
