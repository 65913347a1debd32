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

/// The forms whose built script is equivalent to `script`, one for each page; nothing where the wizard could
/// not have written it. A form without text and bitmap is an empty page.
std::optional<std::vector<MessageForm>> pageForms(std::string_view script, const FieldFormats& formats);

} // namespace orvista
