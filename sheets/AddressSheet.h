#pragma once

#include "items/AddressList.h"

#include <span>
#include <string>

/// The address list for other programs and for paper.
namespace orvista {

/// \returns UTF-8 with its mark
std::string addressCsv(std::span<const AddressRow> rows, char separator = ',');

/// One page to print, without anything from elsewhere.
std::string addressHtml(std::span<const AddressRow> rows, const Project& project);
/// What that page shows, without a style.
std::string addressHtmlBody(std::span<const AddressRow> rows, const Project& project);

} // namespace orvista
