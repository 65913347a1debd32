#pragma once

#include "items/ProjectNotes.h"
#include "widgets/RowsTable.h"

namespace orvista {

/// The cell of a column "Label": all that is noted is in its tool-tip, and found by a filter.
TableCell labelCell(const ItemNote& note);

/// All that is noted, line by line, as markup; empty where nothing is.
QString noteToolTip(const ItemNote& note);

/// Whether the text stands in what is noted, whatever its case.
bool isNoted(const ItemNote& note, const QString& text);

} // namespace orvista
