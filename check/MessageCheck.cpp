#include "check/MessageCheck.h"

#include "check/FindingList.h"
#include "check/PageCheck.h"
#include "check/RemarkTexts.h"
#include "model/BitmapName.h"
#include "model/Lines.h"
#include "model/Quotation.h"
#include "model/ReservedLines.h"
#include "model/Text.h"
#include "script/ScriptInterpreter.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace orvista {

namespace {

/// " and the messages after it get the next number (STDMSG13 becomes STDMSG14)"; less where there are none,
/// or the only one has no place to go to. \param way 1 or -1
std::string laterMessages(Item message, int way) {
    const std::size_t count = rowOf(message.kind).count;
    const std::size_t next = message.index + std::size_t{1};
    if (next >= count)
        return {};
    const std::string nextName = nameOf({message.kind, next});
    if (way > 0 && next + 1 >= count)
        return " and " + nextName + " is gone";
    return std::string(" and the messages after it get the ") + (way > 0 ? "next" : "previous") +
           " number (" + nextName + " becomes " + nameOf({message.kind, way > 0 ? next + 1 : next - 1}) + ")";
}

/// What becomes of a message with a reserved line.
std::string reservedLineText(Item message, ReservedLine kind, std::string_view line, bool followsText) {
    const std::string name = deviceQuotation(trimBlanks(line));
    switch (kind) {
    case ReservedLine::MessageStart:
        return "When the project is opened again all of this message up to this line is gone, because " +
               name + " begins a message in the project's files: change the line or delete it.";
    case ReservedLine::MessageEnd:
        if (!followsText)
            return "This line does nothing here, and " + name +
                   " would end this message if anything stood before it: delete it.";
        return "When the project is opened again this message ends before this line" +
               laterMessages(message, 1) + ", because " + name +
               " ends a message in the project's files: change the line or delete it.";
    case ReservedLine::SectionHeader:
        return "When the project is opened again this message is gone, and others may be gone with it, "
               "because " +
               name + " begins a section of the project's files: change the line or delete it.";
    }
    return {};
}

/// Finds lines that the files around a message take for their own.
FindingList reservedLines(Item item, std::string_view script, std::vector<std::size_t>& numbers) {
    FindingList found(item);
    MemorySource source(script);
    LineReader lines(source);
    std::string_view line;
    bool followsText = false; // an end right after a start is an ordinary line to the files' reader
    for (std::size_t number = 1; lines.next(line); ++number) {
        // What begins with a mark, which the reader leaves out, begins with nothing else.
        const bool isBehindMark = number == 1 && script.starts_with(utf8ByteOrderMark);
        const auto kind = isBehindMark ? std::nullopt : reservedLine(line);
        if (kind) {
            numbers.push_back(number);
            found.add(Code::ReservedLine, {number, line.find_first_not_of(' ') + 1, trimBlanks(line).size()},
                      [&] { return reservedLineText(item, *kind, line, followsText); });
        }
        followsText =
            kind != ReservedLine::MessageStart && (followsText || isBehindMark || !trimBlanks(line).empty());
    }
    return found;
}

FindingList lostMessage(Item item, std::string_view script) {
    FindingList found(item);
    if (!script.empty() && script.find_first_not_of(" \r\n") == std::string_view::npos)
        found.add(Code::LostMessage, {}, [&] {
            return "When the project is opened again this message is gone" + laterMessages(item, -1) +
                   ", because it holds nothing but blanks: write CLEAR.";
        });
    return found;
}

/// \param reserved numbers of the lines that are found for another reason
FindingList skippedLines(Item item, const InterpretedScript& script,
                         const std::vector<std::size_t>& reserved) {
    FindingList found(item);
    for (const ScriptRemark& remark : script.remarks)
        if (!std::ranges::binary_search(reserved, remark.line))
            found.add(codeOf(remark.reason), {remark.line, remark.column, remark.length},
                      [&] { return remarkText(remark); });
    for (std::size_t i = 0; i < script.moreRemarks.size(); ++i) {
        const auto reason = static_cast<RemarkReason>(i);
        std::size_t more = script.moreRemarks[i];
        // To the display a reserved line is no command.
        if (reason == RemarkReason::UnknownCommand && more > 0)
            more -= static_cast<std::size_t>(reserved.end() -
                                             std::ranges::upper_bound(reserved, script.remarks.back().line));
        found.count(codeOf(reason), more);
    }
    return found;
}

} // namespace

DrawnPage drawnPage(ScriptPage page, const BitmapProvider& provider, BitmapsByName& bitmaps) {
    return drawnPage(std::move(page), [&](const std::string& name) -> std::shared_ptr<const LedImage> {
        if (!isBitmapName(name))
            return nullptr;
        const auto [known, isNew] = bitmaps.try_emplace(lowerAscii(name));
        if (isNew)
            known->second = provider.bitmap(name);
        return known->second.image;
    });
}

CheckedMessage checkScript(Item item, std::string_view script, PanelSize panel, const FieldFormats& formats,
                           const BitmapProvider& bitmaps) {
    std::vector<std::size_t> reserved;
    std::vector<FindingList> found;
    found.reserve(4);
    found.push_back(lostMessage(item, script));
    found.push_back(reservedLines(item, script, reserved));

    CheckedMessage result;
    FindingList drawn(item);
    const InterpretedScript interpreted = interpretPageByPage(script, [&](ScriptPage& page) {
        result.variables |= variablesShown(page);
        const DrawnPage shown = drawnPage(std::move(page), bitmaps, result.bitmaps);
        checkPage(shown, panel, formats, result.bitmaps, drawn);
    });
    found.push_back(skippedLines(item, interpreted, reserved));
    found.push_back(std::move(drawn));
    result.findings = FindingList::merged(std::move(found));
    return result;
}

} // namespace orvista
