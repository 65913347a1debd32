#include "check/FixFamilies.h"
#include "check/FixedPage.h"
#include "display/LedFont.h"
#include "display/PageFit.h"
#include "model/Numbers.h"
#include "script/ScriptCommands.h"
#include "script/ScriptInterpreter.h"
#include "script/ScriptWords.h"

#include <algorithm>
#include <array>
#include <string>
#include <variant>

namespace orvista {

namespace {

constexpr int usualSpeed = 50; ///< milliseconds from one move to the next

/// What ends a page.
struct PageEnd {
    std::size_t lastLine = 0;  ///< of the page that is not blank
    std::size_t leaveLine = 0; ///< 0 where it has none
    int leaveSpeed = usualSpeed;
    std::size_t steps = 0; ///< lines that give the page time
};

PageEnd endOf(const FixedPage& drawn) {
    PageEnd end;
    const ScriptText& text = drawn.text();
    for (std::size_t line = drawn.page().firstLine; line <= text.count(); ++line) {
        const std::string_view content = text.line(line).substr(text.skipped(line));
        if (content.find_first_not_of(' ') == std::string_view::npos)
            continue;
        ScriptWords words(content);
        const ScriptCommand command = scriptCommand(line, words);
        if (std::holds_alternative<ClearPage>(command) && line > drawn.page().firstLine)
            break;
        end.lastLine = line;
        const auto* const step = std::get_if<ScriptStep>(&command);
        if (step == nullptr)
            continue;
        ++end.steps;
        if (step->kind != StepKind::Leave)
            continue;
        end.leaveLine = line;
        if (step->effect != Effect::Fade && step->milliseconds > 0)
            end.leaveSpeed = step->milliseconds;
        break;
    }
    return end;
}

/// The page leaves in a way that shows all of the element.
void addWayOut(const FixGround& ground, const FixedPage& drawn, std::vector<Fix>& fixes) {
    const PageFit fit(drawn.page(), ground.panel, ground.formats);
    const auto wayOut = fit.unseen(drawn.element(), Passing::Counts).wayOut;
    if (!wayOut)
        return;
    const std::string way = "OUT " + std::string(styleOf(*wayOut).shown);
    const PageEnd end = endOf(drawn);
    const std::string command = way + " 1 " + decimalText(end.leaveSpeed);
    const std::string_view last = drawn.text().line(end.lastLine);
    FixEdit edit = drawn.inserted(end.lastLine, last.size() + 1, {});
    if (end.leaveLine > 0) {
        edit.column = last.find_first_not_of(' ', drawn.text().skipped(end.lastLine)) + 1;
        edit.length = last.find_last_not_of(' ') + 2 - edit.column;
        edit.text = command;
    } else {
        // A page that says nothing of its time is held all the same, but not if it says how it leaves.
        const bool isHeldUnsaid = end.steps < drawn.page().steps.size();
        const std::string hold = isHeldUnsaid ? "\r\nACT STILL " + decimalText(defaultHold) : std::string();
        edit.text = hold + "\r\n" + command;
    }
    fixes.push_back({"Let the page leave with " + way, {edit}});
}

/// Of a text or value; a bitmap has none.
std::optional<LedFont> fontOf(const ScriptElement& element) {
    if (const auto* const text = std::get_if<TextElement>(&element))
        return text->font;
    if (const auto* const field = std::get_if<FieldElement>(&element))
        return field->font;
    return std::nullopt;
}

/// The rows that the message wizard writes the two fonts on.
constexpr int largeRow = 0;
constexpr int smallRow = 5;

/// All of a line is written in the small font, or the values would leave their blanks.
void addSmallFont(const FixedPage& drawn, std::vector<Fix>& fixes) {
    const auto& elements = drawn.page().elements;
    if (fontOf(elements[drawn.element()]) != LedFont::Large8x15)
        return;
    const int row = placementOf(elements[drawn.element()]).y;
    std::vector<std::size_t> line;
    for (std::size_t i = 0; i < elements.size(); ++i)
        if (fontOf(elements[i]) == LedFont::Large8x15 && placementOf(elements[i]).y == row)
            line.push_back(i);
    const int left = drawn.x(std::ranges::min(line, {}, [&](std::size_t i) { return drawn.x(i); }));
    const int large = cellWidth(LedFont::Large8x15);
    Fix fix{line.size() == 1 ? "Write it in the small font" : "Write this line in the small font", {}};
    for (const std::size_t i : line) {
        const int beside = drawn.x(i) - left;
        if (beside % large != 0)
            return;
        const ScriptSource& source = sourceOf(elements[i]);
        fix.edits.push_back(drawn.inserted(source.line, source.command.column + source.command.length, "S"));
        if (beside > 0)
            fix.edits.push_back(drawn.withX(i, left + beside / large * cellWidth(LedFont::Small5x7)));
        if (row == largeRow)
            fix.edits.push_back(drawn.withY(i, smallRow));
    }
    fixes.push_back(std::move(fix));
}

/// What overlaps moves together, so that values stay on their blanks.
void addMove(const FixGround& ground, const FixedPage& drawn, std::vector<Fix>& fixes) {
    const std::vector<std::size_t> group = drawn.meeting(drawn.element());
    DotBox all = drawn.box(drawn.element());
    for (const std::size_t i : group)
        all = around(all, drawn.box(i));
    const std::int64_t columns = ground.panel.columns;
    const bool goesLeft = all.right > columns;
    const std::int64_t dots = goesLeft ? columns - all.right : std::max<std::int64_t>(-all.left, 0);
    const bool hasRoom = dots != 0 && all.left + dots >= 0 && all.right + dots <= columns;
    if (!hasRoom || drawn.wouldMeet(group, dots))
        return;
    fixes.push_back({std::string("Move it ") + (goesLeft ? "left" : "right") + " to " +
                         decimalText(drawn.x(drawn.element()) + dots),
                     drawn.movedBy(group, dots)});
}

} // namespace

std::vector<Fix> cutFixes(const FixGround& ground, const Finding& finding) {
    std::vector<Fix> fixes;
    const auto drawn = FixedPage::drawnAt(ground, finding.place);
    if (!drawn)
        return fixes;
    addWayOut(ground, *drawn, fixes);
    addSmallFont(*drawn, fixes);
    addMove(ground, *drawn, fixes);
    return fixes;
}

} // namespace orvista
