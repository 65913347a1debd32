#pragma once

#include "link/AcceptanceLedger.h"
#include "link/ModbusReader.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// What is kept aside while a display is accepted, so that what was there before can be put back should this
/// program be killed.
struct CutOffAcceptance {
    std::string address;             ///< of the display, as typed, UTF-8
    std::vector<DisplayItem> before; ///< what was there
    /// What may have been written; places are those of `before`.
    std::vector<WrittenItem> written;
};

/// Checked texts after the line "orvista-acceptance 1", each as its length in decimal, a colon and its bytes:
/// the address; how many items, and of each its name, its address and two words in decimal; how many were
/// written, and of each its place, two words from before and the two that were written.
std::string acceptanceCopy(const CutOffAcceptance& acceptance);

/// Nothing when the bytes are not whole, of another version, or name items or places that there are not.
std::optional<CutOffAcceptance> readAcceptanceCopy(std::string_view bytes);

} // namespace orvista
