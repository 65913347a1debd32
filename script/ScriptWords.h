#pragma once

#include "script/ScriptPage.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvista {

/// Bounds that keep a hostile script cheap to show.
inline constexpr int maximumCoordinate = 1'000'000;    ///< either way
inline constexpr int maximumHold = 3'600'000;          ///< milliseconds
inline constexpr int maximumStepMilliseconds = 60'000; ///< of a move, a fade level, half a blink
inline constexpr int maximumBlinks = 1000;

/// What a word of a command stands for.
enum class ScriptArgument {
    X,
    Y,
    Foreground,
    Background,
    Text,
    FileName,
    Variable,
    Effect,
    Act,
    Pixels,
    Speed,
    Hold,
    BlinkCount,
    BlinkTime
};

/// Takes a line of a script apart, from the left. Fields are separated by one or more blanks. The first
/// word that is not what it should be is kept.
class ScriptWords {
public:
    /// \param line without its line end
    /// \param skipped bytes of the line that stand before it
    explicit ScriptWords(std::string_view line, std::size_t skipped = 0);

    /// The column, from 1, at which the next field begins; after the last byte when there is none.
    std::size_t column() const { return skipped_ + position_ + 1; }
    /// The next field; empty when there is none.
    std::string_view word();
    /// The field that was taken last.
    std::string_view lastWord() const { return last_; }
    /// All that is left, without blanks at its ends.
    std::string_view rest();

    /// Digits alone; a larger number counts as `maximum`.
    std::optional<int> number(ScriptArgument argument, int maximum);
    /// The same with "-" directly in front or without.
    std::optional<int> coordinate(ScriptArgument argument);
    std::optional<Led> colour(ScriptArgument argument);
    /// From the first to the last double quote: quotes within are not escaped. What follows does not count.
    std::optional<std::string_view> quoted();

    struct Wrong {
        ScriptArgument argument;
        std::size_t column;
        std::string_view word; ///< empty: it is missing
    };
    /// Nothing while all words were as they should be.
    const std::optional<Wrong>& wrong() const { return wrong_; }
    /// Says that the word at `column` is wrong, unless an earlier one was.
    void refuse(ScriptArgument argument, std::size_t column, std::string_view word);

private:
    void skipBlanks();

    std::string_view line_;
    std::size_t skipped_;
    std::size_t position_ = 0;
    std::string_view last_;
    std::optional<Wrong> wrong_;
};

} // namespace orvista
