#pragma once

#include <QString>

#include <cstddef>
#include <optional>

namespace orvista {

/// A stretch of a shown text, in characters.
struct ShownRange {
    qsizetype position = 0;
    qsizetype length = 0;
    bool operator==(const ShownRange&) const = default;
};

/// Where a shown script (shownScript) has the line of that number, without its end. Lines count from 1, as
/// the display takes them: a CR or LF alone ends a line, too, and a break made for showing does not. Nothing
/// when the script has fewer lines.
std::optional<ShownRange> shownScriptLine(const QString& shown, std::size_t number);

} // namespace orvista
