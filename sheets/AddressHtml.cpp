#include "sheets/AddressSheet.h"

#include "model/Windows1252.h"
#include "sheets/Markup.h"

#include <algorithm>
#include <vector>

namespace orvista {

namespace {

constexpr std::string_view pageStart = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>)";

constexpr std::string_view style = R"(</title>
<style>
body { font: 10pt sans-serif; margin: 2em; color: #000; background: #fff }
h1 { font-size: 16pt } h2 { font-size: 12pt; margin-top: 2em; break-after: avoid }
table { border-collapse: collapse; width: 100% }
thead { display: table-header-group } tr { break-inside: avoid }
th, td { border: 1px solid #888; padding: 2px 6px; text-align: left; vertical-align: top }
th { background: #ddd; print-color-adjust: exact; -webkit-print-color-adjust: exact }
td { white-space: pre-wrap }
@page { size: A4 landscape; margin: 12mm }
@media print { body { margin: 0; font-size: 8pt } }
</style>
</head>
<body>
)";

constexpr std::string_view explanations =
    R"(<p>In this list addresses count from 0, as in the request. A reference counts from 1, after a 0 for coils and
a 4 for holding registers. Coils are written with function 5, the coils of messages also with function 15.</p>
<p>A float takes two holding registers, the low word first, and is written whole with function 16. 123.456 is
42F6E979 as a single: its first register is E979, the second 42F6, and the request carries the bytes
E9 79 42 F6. Many tools call this order CDAB.</p>
)";

bool isNoted(const AddressRow& row, std::string_view column) {
    return std::ranges::any_of(noteFields, [&](const NoteField& field) {
        return field.name == column && !(row.noted.*field.text).empty();
    });
}

/// What a block's table leaves out: the columns that have nothing in it.
bool isColumnOf(std::span<const AddressRow> rows, std::string_view kind, std::size_t column) {
    const std::string_view name = addressColumns[column];
    if (std::ranges::find(noteFields, name, &NoteField::name) != noteFields.end())
        return std::ranges::any_of(
            rows, [&](const AddressRow& row) { return row.kind == kind && isNoted(row, name); });
    if (name == "kind")
        return false;
    if (name == "word_order" || name == "format")
        return kind == "float";
    if (name == "used_by" || name == "default")
        return kind == "float" || kind == "boolean";
    return name != "text" || kind != "float";
}

void appendTableRow(std::string& html, const std::vector<std::size_t>& columns, std::string_view tag,
                    auto cells) {
    html += "<tr>";
    for (const std::size_t column : columns)
        html.append("<").append(tag).append(">").append(cells(column)).append("</").append(tag).append(">");
    html += "</tr>\n";
}

/// "address_hex" becomes "address hex".
std::string columnHeading(std::size_t column) {
    std::string text(addressColumns[column]);
    for (char& character : text)
        if (character == '_')
            character = ' ';
    return text;
}

void appendBlock(std::string& html, std::span<const AddressRow> rows, std::string_view kind,
                 std::string_view title) {
    std::vector<std::size_t> columns;
    for (std::size_t column = 0; column < addressColumnCount; ++column)
        if (isColumnOf(rows, kind, column))
            columns.push_back(column);
    html.append("<h2>").append(title).append("</h2>\n<table>\n<thead>");
    appendTableRow(html, columns, "th", columnHeading);
    html += "</thead>\n<tbody>\n";
    for (const AddressRow& row : rows) {
        if (row.kind != kind)
            continue;
        const auto cells = addressCells(row);
        appendTableRow(html, columns, "td", [&](std::size_t column) {
            return escapedForMarkup(addressColumns[column] == "word_order" ? wordOrderText(row)
                                                                           : cells[column]);
        });
    }
    html += "</tbody>\n</table>\n";
}

std::string titleOf(const Project& project) {
    return "Addresses of " + escapedForMarkup(project.ProjName);
}

} // namespace

std::string timeForPeople(std::string time) {
    std::ranges::replace(time, 'T', ' ');
    if (time.ends_with('Z'))
        time.replace(time.size() - 1, 1, " UTC");
    return time;
}

std::string projectFileNameOf(const Project& project) {
    return project.ProjName.empty() ? "" : project.ProjName + ".orx";
}

std::string wordOrderText(const AddressRow& row) {
    return row.wordOrder.empty() ? "" : std::string(row.wordOrder) + " (" + std::string(byteOrder) + ")";
}

std::string addressHtml(std::span<const AddressRow> rows, const Project& project, const AddressHead& head) {
    return std::string(pageStart)
        .append(titleOf(project))
        .append(style)
        .append(addressHtmlBody(rows, project, head))
        .append("</body>\n</html>\n");
}

std::string addressHeadHtml(const Project& project, const AddressHead& head) {
    std::string html = "<p>Device address: ";
    html.append(escapedForMarkup(utf8FromWindows1252(project.IP))).append("</p>\n<p>");
    if (!head.display.empty())
        html.append("Display: ").append(escapedForMarkup(head.display)).append("<br>\n");
    if (!project.ProjName.empty())
        html.append("File: ").append(escapedForMarkup(projectFileNameOf(project))).append("</p>\n<p>");
    if (!head.fingerprint.empty())
        html.append("Fingerprint of the project: ").append(head.fingerprint).append("<br>\n");
    return html.append("As of ").append(timeForPeople(head.time)).append("</p>\n");
}

std::string addressTablesHtml(std::span<const AddressRow> rows) {
    std::string html(explanations);
    appendBlock(html, rows, "float", "Float variables");
    appendBlock(html, rows, "boolean", "Boolean variables");
    appendBlock(html, rows, "emergency", "Emergency messages");
    appendBlock(html, rows, "regular", "Regular messages");
    return html;
}

std::string addressHtmlBody(std::span<const AddressRow> rows, const Project& project,
                            const AddressHead& head) {
    return "<h1>" + titleOf(project) + "</h1>\n" + addressHeadHtml(project, head) + addressTablesHtml(rows);
}

} // namespace orvista
