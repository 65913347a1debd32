#pragma once

#include "display/DisplayValues.h"
#include "display/FieldFormats.h"
#include "script/ScriptPage.h"

#include <string>

/// What is to be read on a page; Windows-1252.
namespace orvista {

/// What a live field shows.
std::string fieldText(const FieldElement& field, const FieldFormats& formats, const DisplayValues& values);

/// The texts and fields of a page and the names of its bitmaps in the order they are drawn, with a blank
/// between them.
std::string pageText(const ScriptPage& page, const FieldFormats& formats, const DisplayValues& values);

} // namespace orvista
