#pragma once

#include "display/Programme.h"
#include "script/MessagePage.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The way back from a message's script to what was chosen in the message wizard.
namespace orvista {

/// The pages of the forms, joined by CR LF.
std::string builtScript(std::span<const MessageForm> forms);

/// Whether two scripts are the same but for blanks around their lines, empty lines and the last line's end,
/// which saving and opening takes away or adds. Empty CLEAR pages at the start count as empty lines: they are
/// left of the empty message that a page was appended to.
bool saySame(std::string_view script, std::string_view other);

/// The forms whose built script says the same as `script`, one for each page; nothing where the wizard could
/// not have written it. A form without text and bitmap is an empty page.
std::optional<std::vector<MessageForm>> pageForms(std::string_view script, const FieldFormats& formats);

} // namespace orvista
