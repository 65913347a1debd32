#pragma once

#include "display/Programme.h"
#include "script/ScriptPage.h"

#include <cstddef>
#include <string>

/// A page's text as the message wizard takes it, its fields written as placeholders.
namespace orvista {

/// The text with "%5v" for each field of the page that stands in it: same font, same row, at a whole column.
/// A field is as wide as the blanks from its column on, up to the next field, but no wider than it is shown,
/// and at least 1; the blanks left over stay. A field after the text's end is reached by blanks. \returns
/// device bytes
std::string contentText(const ScriptPage& page, const TextElement& text, const FieldFormats& formats);

/// Of the first text that a script draws; empty when it draws none.
std::string firstText(const InterpretedScript& script, const FieldFormats& formats);

} // namespace orvista
