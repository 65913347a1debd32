#pragma once

#include "model/PathRules.h"
#include "script/PlaceholderScan.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// One page of a message script, as the message wizard composes it.
namespace orvista {

/// A row of the wizard's field table. All positions count from 0.
struct FieldChoice {
    std::size_t cbVar = 0;
    std::size_t cbVarFgClr = 0;
    std::size_t cbVarBgClr = 3;
    bool operator==(const FieldChoice&) const = default;
};

/// What the wizard's controls hold: texts, and positions in the lists of script/WizardLists.h. A fresh value
/// is what the wizard opens with.
struct MessageForm {
    bool bitmap = false;
    bool isOfMaster = false; ///< places in the text count as wide as they are shown
    std::string txtText;     ///< device bytes
    std::string txtPath;     ///< UTF-8

    std::size_t cbFgClr = 0;
    std::size_t cbBgClr = 3;
    std::size_t cbFont = 1;
    std::array<FieldChoice, fieldSlotCount> fields;

    std::size_t cbInEffect = 1;
    std::size_t cbIFSpeed = 1;
    std::size_t cbSpEffect = 0;
    std::size_t cbDelay = 0;
    std::size_t cbOutEffect = 1;
    std::size_t cbOFSpeed = 1;
    bool operator==(const MessageForm&) const = default;
};

/// The name a script gives a bitmap: what stands after the last separator of `path` (UTF-8), in device
/// bytes. Nothing when the device's encoding lacks one of its characters, or when it holds a line end, which
/// would end the script line.
std::optional<std::string> bitmapName(const PathRules& paths, std::string_view path);

/// The page in device bytes, its lines joined by CR LF: "CLEAR", content, fields, entering effect, special
/// effect, leaving effect. Without content (no text, no path, or a path that bitmapName has nothing for) it
/// is "CLEAR" and CR LF.
/// \throws std::out_of_range when a position is beyond its list
std::string BuildPartialScript(const MessageForm& form, const PathRules& paths);

} // namespace orvista
