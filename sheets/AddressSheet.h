#pragma once

#include "items/AddressList.h"

#include <span>
#include <string>

/// The address list for other programs and for paper.
namespace orvista {

/// What tells one list from another.
struct AddressHead {
    std::string fingerprint; ///< of what an upload of the project sends; empty where it cannot be told
    std::string time;        ///< of the list, as utcText() writes it
};

/// \returns UTF-8 with its mark
std::string addressCsv(std::span<const AddressRow> rows, char separator = ',');

/// One page to print, without anything from elsewhere.
std::string addressHtml(std::span<const AddressRow> rows, const Project& project, const AddressHead& head);
/// What that page shows, without a style.
std::string addressHtmlBody(std::span<const AddressRow> rows, const Project& project,
                            const AddressHead& head);

} // namespace orvista
