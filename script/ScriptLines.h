#pragma once

#include "model/Bytes.h"
#include "model/Lines.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvista {

/// The lines of a script that count, one after the other: blanks around lines, empty lines and the end of the
/// last line do not, since saving and opening takes them away or adds them. An empty script counts as CLEAR,
/// as which it is written.
class ScriptLines {
public:
    /// \param script must outlive the object
    explicit ScriptLines(std::string_view script);

    /// The next line, without blanks around it; holds until the next call. Empty at the end.
    std::string_view next();
    /// Of the line that next() gave, from 1; every line of the script counts.
    std::size_t number() const { return number_; }

private:
    MemorySource source_;
    LineReader reader_;
    std::size_t number_ = 0;
};

/// The lines that count, each ended by CR LF.
std::string linesThatCount(std::string_view script);

/// What empty CLEAR pages at the start of a script mean.
enum class EmptyStart {
    Counts,
    IsLeftOut, ///< they are left of an empty message that a page was appended to
};

/// Whether the lines of two scripts that count are the same.
bool equivalent(std::string_view script, std::string_view other, EmptyStart start = EmptyStart::Counts);

} // namespace orvista
