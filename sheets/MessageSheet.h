#pragma once

#include "sheets/SheetImport.h"

#include <string>
#include <string_view>
#include <vector>

/// The 60 messages as a table. In the scripts form a row is a message; in the pages form it is a page, with
/// what is chosen in the message wizard, or the whole script of a message that the wizard could not have
/// written.
namespace orvista {

enum class MessageSheetForm { Scripts, Pages };

struct MessageSheet {
    std::string csv; ///< UTF-8 with its mark
    /// Messages with a CR or LF alone, which the sheet has as a whole line end.
    std::vector<Item> mendedLineEnds;
};

MessageSheet messageSheet(const Project& project, MessageSheetForm form);

/// What a sheet of either form changes in the project. A script that differs only in what saving and opening
/// takes away or adds is no change, and neither are pages that say the same.
SheetImport importMessages(std::string_view bytes, const Project& project);

} // namespace orvista
