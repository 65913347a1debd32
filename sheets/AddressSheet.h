#pragma once

#include "items/AddressList.h"

#include <span>
#include <string>
#include <string_view>

/// The address list for other programs and for paper.
namespace orvista {

/// What tells one list from another. Texts are UTF-8.
struct AddressHead {
    std::string fingerprint; ///< of what an upload of the project sends; empty where it cannot be told
    std::string time;        ///< of the list, as utcText() writes it
    std::string display;     ///< its name in the notes, which may be empty
    std::string release;     ///< of the program: "1.03-2"
};

/// A time of utcText() as people read it: "2026-11-22 03:15:00 UTC".
std::string timeForPeople(std::string time);

/// "low word first" in the words of many tools: the bytes of the float ABCD as they are sent.
inline constexpr std::string_view byteOrder = "CDAB";
/// "low word first (CDAB)"; empty for a bit.
std::string wordOrderText(const AddressRow& row);

/// The project file's name, without its folder; empty for a project that has none yet.
std::string projectFileNameOf(const Project& project);

/// \returns UTF-8 with its mark
std::string addressCsv(std::span<const AddressRow> rows, char separator = ',');

std::string addressJson(std::span<const AddressRow> rows, const Project& project, const AddressHead& head);

/// One page to print, without anything from elsewhere.
std::string addressHtml(std::span<const AddressRow> rows, const Project& project, const AddressHead& head);
/// Its parts: what tells this list from another, as paragraphs, and the tables with what explains them.
std::string addressHeadHtml(const Project& project, const AddressHead& head);
std::string addressTablesHtml(std::span<const AddressRow> rows);
/// What that page shows, without a style.
std::string addressHtmlBody(std::span<const AddressRow> rows, const Project& project,
                            const AddressHead& head);

} // namespace orvista
