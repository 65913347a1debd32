#include "sheets/BookHtml.h"

#include "display/PanelDrawing.h"
#include "display/PngFile.h"
#include "model/Numbers.h"
#include "sheets/Base64.h"
#include "sheets/Markup.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <string_view>
#include <vector>

namespace orvista {

namespace {

constexpr std::string_view bookStart = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>)";

constexpr std::string_view bookStyle = R"(</title>
<style>
:root { color-scheme: light dark }
body { font: 10pt sans-serif; margin: 2em; color: #000; background: #fff }
h1 { font-size: 16pt } h2 { font-size: 12pt; margin-top: 2em } h2, h2 + p { break-after: avoid }
table { border-collapse: collapse; width: 100%; margin-bottom: 1em }
thead { display: table-header-group } tr, .page { break-inside: avoid }
th, td { border: 1px solid #888; padding: 2px 6px; text-align: left; vertical-align: top }
th { background: #ddd; print-color-adjust: exact; -webkit-print-color-adjust: exact }
td { white-space: pre-wrap }
img { max-width: 100%; height: auto; vertical-align: top }
.warning { font-weight: bold } .signature { margin-top: 4em }
@media screen and (prefers-color-scheme: dark) {
body { color: #e6e6e6; background: #16181b } th { background: #33373d } a { color: #8ab4f8 }
}
@page { size: A4 landscape; margin: 12mm }
@media print { body { margin: 0; font-size: 8pt } a { color: #000; text-decoration: none } }
</style>
</head>
<body>
)";

/// Pixels across an A4 page that lies on its side; a wider picture is shown smaller.
constexpr int mostShownWidth = 1000;

std::string bookTitle(const Project& project) {
    return "Messages of " + escapedForMarkup(project.ProjName);
}

std::string brokenLines(const std::vector<std::string>& texts) {
    std::string html;
    for (const std::string& text : texts)
        html.append(html.empty() ? "" : "<br>").append(escapedForMarkup(text));
    return html;
}

/// \param cells markup
std::string tableRow(std::string_view tag, const std::vector<std::string>& cells) {
    std::string html = "<tr>";
    for (const std::string& cell : cells)
        html.append("<").append(tag).append(">").append(cell).append("</").append(tag).append(">");
    return html + "</tr>\n";
}

std::string tableHead(const std::vector<std::string>& cells) {
    return "<table>\n<thead>" + tableRow("th", cells) + "</thead>\n";
}

std::string durationText(std::int64_t milliseconds) {
    return secondsText(std::chrono::milliseconds(milliseconds));
}

/// "STDMSG3 TankFull"
std::string headingOf(const BookMessage& message) {
    const std::string& label = message.place.noted.label;
    return message.place.name + (label.empty() ? "" : " " + escapedForMarkup(label));
}

std::string linkTo(const std::string& anchor, const std::string& text) {
    return "<a href=\"#" + anchor + "\">" + text + "</a>";
}

/// Result and remark.
std::vector<std::string> seenCells(const Acceptance& acceptance, Item message) {
    const SeenMessage* const seen = acceptance.of(message);
    return seen ? std::vector{std::string(seenResultText(seen->result)), escapedForMarkup(seen->remark)}
                : std::vector<std::string>{"not seen", ""};
}

std::string contentsRow(const BookMessage& message, const MessageBook& book) {
    std::vector<std::string> cells{linkTo(message.place.name, message.place.name),
                                   escapedForMarkup(message.place.noted.label),
                                   message.place.reference,
                                   escapedForMarkup(message.place.text),
                                   decimalText(message.pages.size() + message.pagesLeftOut),
                                   durationText(message.milliseconds),
                                   decimalText(message.findings.size())};
    if (book.acceptance)
        std::ranges::move(seenCells(*book.acceptance, message.place.item), std::back_inserter(cells));
    return tableRow("td", cells);
}

/// Of messages that were seen, but draw nothing in this project.
std::string otherSeenRows(const MessageBook& book) {
    std::string html;
    for (const SeenMessage& seen : book.acceptance->messages) {
        if (std::ranges::any_of(book.messages, [&](const BookMessage& message) {
                return message.place.item == seen.message;
            }))
            continue;
        std::vector<std::string> cells{nameOf(seen.message), "", "", "", "", "", ""};
        std::ranges::move(seenCells(*book.acceptance, seen.message), std::back_inserter(cells));
        html += tableRow("td", cells);
    }
    return html;
}

std::string contentsOf(const MessageBook& book) {
    std::vector<std::string> heads{"Message", "Label", "Reference", "Text", "Pages", "Time", "Findings"};
    if (book.acceptance)
        heads.insert(heads.end(), {"Result", "Remark"});
    std::string html = "<h2>Contents</h2>\n" + tableHead(heads) + "<tbody>\n";
    for (const BookMessage& message : book.messages)
        html += contentsRow(message, book);
    if (book.acceptance)
        html += otherSeenRows(book);
    html += "</tbody>\n</table>\n<p>";
    if (!book.otherFindings.empty() || book.findingsNotListed > 0)
        html += linkTo("findings", "Other findings") + "<br>\n";
    return html + linkTo("addresses", "Addresses") + "</p>\n";
}

std::string acceptanceHtml(const MessageBook& book, const AddressHead& head) {
    if (!book.acceptance)
        return {};
    const Acceptance& acceptance = *book.acceptance;
    std::string html = "<h2>Acceptance</h2>\n<p>Seen by " + escapedForMarkup(acceptance.name) +
                       " at the display " + escapedForMarkup(acceptance.address) + ", begun " +
                       timeForPeople(acceptance.time) + "</p>\n";
    if (isOfAnotherProject(acceptance, head))
        html += "<p class=\"warning\">Warning: the display held " + escapedForMarkup(acceptance.fingerprint) +
                ", another project than this one.</p>\n";
    return html + "<p class=\"signature\">Date and signature: "
                  "________________________________________________</p>\n";
}

/// Draws the pictures of a book.
class BookPictures {
public:
    explicit BookPictures(int columns) : drawing_({columns}, bookScale) {}

    /// \param alternative what is said in its place
    std::string html(const LedRaster& raster, const std::string& alternative) const {
        const PixelImage picture = drawing_.draw(raster);
        const int width = std::min(picture.width, mostShownWidth);
        return "<img width=\"" + decimalText(width) + "\" height=\"" +
               decimalText(picture.height * width / picture.width) + "\" alt=\"" +
               escapedForMarkup(alternative) + "\" src=\"data:image/png;base64," +
               base64(smallPngFile(picture)) + "\">";
    }

private:
    PanelDrawing drawing_;
};

std::string pageHtml(const BookPage& page, const std::string& message, const BookPictures& pictures) {
    const std::string name = message + ", page " + decimalText(page.number);
    std::string html = "<tbody class=\"page\">\n" +
                       tableRow("td", {decimalText(page.number), durationText(page.milliseconds),
                                       brokenLines(page.acts), brokenLines(page.texts)});
    html += "<tr><td colspan=\"4\">" + pictures.html(page.shown, name + ": " + page.reads);
    if (page.widest)
        html += "<br>With the widest values:<br>" +
                pictures.html(*page.widest, name + ", with the widest values");
    return html + "</td></tr>\n</tbody>\n";
}

std::string placeParagraph(const BookMessage& message) {
    const AddressRow& place = message.place;
    std::string html = "<p>Number " + decimalText(place.number) + " of the " + std::string(place.kind) +
                       " messages, coil address " + decimalText(place.address);
    if (!place.reference.empty())
        html += ", reference " + place.reference;
    if (!place.note.empty())
        html += " (" + escapedForMarkup(place.note) + ")";
    html += "; " + durationText(message.milliseconds);
    if (!place.noted.comment.empty())
        html += "<br>\n" + escapedForMarkup(place.noted.comment);
    return html + "</p>\n";
}

std::string pageTable(const BookMessage& message, const BookPictures& pictures) {
    const std::string& name = message.place.name;
    std::string html = tableHead({"Page of " + name, "Time", "What it does", "Texts"});
    for (const BookPage& page : message.pages)
        html += pageHtml(page, name, pictures);
    html += "</table>\n";
    if (message.pagesLeftOut > 0)
        html += "<p>\u2026 and " + countedText(message.pagesLeftOut, "more page") + "</p>\n";
    return html;
}

std::string variableTable(const BookMessage& message) {
    if (message.variables.empty())
        return {};
    std::string html = tableHead({"Variable of " + message.place.name, "Label", "Unit", "Format or texts",
                                  "Default", "Table", "Address", "Reference"}) +
                       "<tbody>\n";
    for (const AddressRow& row : message.variables)
        html += tableRow("td", {row.name, escapedForMarkup(row.noted.label), escapedForMarkup(row.noted.unit),
                                escapedForMarkup(row.format.empty() ? row.text : row.format),
                                escapedForMarkup(row.defaultValue), std::string(row.table),
                                decimalText(row.address), row.reference});
    return html + "</tbody>\n</table>\n";
}

std::string findingHtml(const Finding& finding, bool isOfMessage) {
    std::string html = "<li>";
    if (!isOfMessage)
        html += nameOf(finding.place) + ": ";
    if (finding.place.line > 0)
        html += "line " + decimalText(finding.place.line) + ": ";
    return html + std::string(severityName(finding.severity())) + ": " + escapedForMarkup(finding.text) +
           " [" + std::string(finding.rule().name) + "]</li>\n";
}

std::string messageHtml(const BookMessage& message, const BookPictures& pictures) {
    std::string html = "<h2 id=\"" + message.place.name + "\">" + headingOf(message) + "</h2>\n" +
                       placeParagraph(message) + pageTable(message, pictures) + variableTable(message);
    if (message.findings.empty())
        return html;
    html += "<p>Findings:</p>\n<ul>\n";
    for (const Finding& finding : message.findings)
        html += findingHtml(finding, true);
    return html + "</ul>\n";
}

std::string otherFindingsOf(const MessageBook& book) {
    if (book.otherFindings.empty() && book.findingsNotListed == 0)
        return {};
    std::string html = "<h2 id=\"findings\">Other findings</h2>\n";
    if (!book.otherFindings.empty()) {
        html += "<ul>\n";
        for (const Finding& finding : book.otherFindings)
            html += findingHtml(finding, false);
        html += "</ul>\n";
    }
    if (book.findingsNotListed > 0)
        html += "<p>\u2026 and " + countedText(book.findingsNotListed, "more finding") + "</p>\n";
    return html;
}

} // namespace

bool isOfAnotherProject(const Acceptance& acceptance, const AddressHead& head) {
    return acceptance.fingerprint != head.fingerprint;
}

std::string bookHtml(const MessageBook& book, const Project& project, const AddressHead& head,
                     const BookStep& step) {
    return std::string(bookStart)
        .append(bookTitle(project))
        .append(bookStyle)
        .append(bookHtmlBody(book, project, head, step))
        .append("</body>\n</html>\n");
}

std::string bookHtmlBody(const MessageBook& book, const Project& project, const AddressHead& head,
                         const BookStep& step) {
    const BookPictures pictures(book.columns);
    std::string html = "<h1>" + bookTitle(project) + "</h1>\n" + addressHeadHtml(project, head) +
                       "<p>Panel: " + decimalText(book.columns) + " x " + decimalText(PanelSize::panelRows) +
                       " dots</p>\n" + contentsOf(book) + acceptanceHtml(book, head);
    for (const BookMessage& message : book.messages) {
        step();
        html += messageHtml(message, pictures);
    }
    return html + otherFindingsOf(book) + "<h2 id=\"addresses\">Addresses</h2>\n" +
           addressTablesHtml(book.addresses);
}

} // namespace orvista
