#pragma once

#include "model/Change.h"
#include "model/Fields.h"
#include "model/Item.h"
#include "model/Project.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orvista {

/// Bytes of an item that are replaced: a piece of a message's script, or the whole text of a variable's
/// field.
struct FixEdit {
    Item item;
    std::size_t line = 0;         ///< of a script, from 1; 0 for a field
    std::size_t column = 0;       ///< the byte of the line, from 1, also the one after its last
    std::size_t length = 0;       ///< in bytes, on over ends of lines
    const Field* field = nullptr; ///< of a variable
    std::string text;             ///< device bytes, lines parted by CR LF
    bool operator==(const FixEdit&) const = default;
};

/// What mends a finding.
struct Fix {
    std::string caption;        ///< "Leave 7 blanks", in UTF-8
    std::vector<FixEdit> edits; ///< places as they are before any of them is made; none overlap
    bool isSure = false;        ///< false where people are to look at it first: it goes by what was meant
    bool operator==(const Fix&) const = default;
};

/// What a fix makes of the project, which must be the one that it was made for.
std::vector<Change> changesOf(const Project& project, const Fix& fix);

/// The number that a line of the message has after the fix; nothing where the line goes.
std::optional<std::size_t> lineAfter(const Project& project, const Fix& fix, Item message, std::size_t line);

} // namespace orvista
