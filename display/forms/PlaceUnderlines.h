#pragma once

#include "items/MasterView.h"
#include "widgets/ScriptPositions.h"

#include <QList>
#include <QTextEdit>

#include <string_view>

namespace orvista {

/// Underlines for the places of a master's script, with the values of its displays as their tool-tips.
/// \param inDocument a cursor of the box that shows the script
QList<QTextEdit::ExtraSelection> placeUnderlines(std::string_view script, const MasterView& view,
                                                 const ScriptPositions& positions,
                                                 const QTextCursor& inDocument);

} // namespace orvista
