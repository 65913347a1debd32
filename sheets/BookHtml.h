#pragma once

#include "sheets/AddressSheet.h"
#include "sheets/MessageBook.h"

#include <string>

/// The message book as one page to read in a browser, or to print on A4.
namespace orvista {

/// Pixels of a book's pictures for each dot.
inline constexpr int bookScale = 4;

/// Whether an acceptance was of another project than the one with that fingerprint.
bool isOfAnotherProject(const Acceptance& acceptance, const AddressHead& head);

/// One page without anything from elsewhere: its pictures are in it.
std::string bookHtml(
    const MessageBook& book, const Project& project, const AddressHead& head, const BookStep& step = [] {});
/// What that page shows, without a style.
std::string bookHtmlBody(const MessageBook& book, const Project& project, const AddressHead& head,
                         const BookStep& step);

} // namespace orvista
