#include "sheets/MessageSheet.h"

#include "check/ProjectCheck.h"
#include "model/Fields.h"
#include "model/Lines.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/Windows1252.h"
#include "script/ScriptLines.h"
#include "sheets/PageColumns.h"
#include "sheets/PageForms.h"

#include <algorithm>
#include <map>
#include <utility>

namespace orvista {

namespace {

namespace columns = pageColumns;

/// More pages than any device shows in a day; a larger number is a slip.
constexpr std::size_t maximumPageNumber = 1'000'000;

std::string scriptCell(std::string_view script) {
    return withWholeLineEnds(utf8FromWindows1252(script));
}

void appendPages(std::string& csv, const std::string& name, const std::string& script,
                 const FieldFormats& formats) {
    const auto forms = pageForms(script, formats);
    if (!forms) {
        std::vector<std::string> row(columns::Count);
        row[columns::Message] = name;
        row[columns::Script] = scriptCell(script);
        return appendRecord(csv, row);
    }
    for (std::size_t page = 0; page < forms->size(); ++page) {
        std::vector<std::string> row = columns::cells((*forms)[page]);
        row[columns::Message] = name;
        row[columns::Page] = decimalText(page + 1);
        appendRecord(csv, row);
    }
}

/// A row that is kept until all rows of its message are there.
struct PageRow {
    std::size_t page;
    std::size_t row;
    std::optional<MessageForm> form; ///< nothing where a cell of it is wrong
};

struct MessageRows {
    std::vector<PageRow> pages;
    std::string script;        ///< device bytes
    std::size_t scriptRow = 0; ///< 0: none
    bool hasErrors = false;
    bool hasUnknownPage = false; ///< a row whose number is wrong, so that none can be said to be missing
};

class MessageImport {
public:
    MessageImport(std::string_view bytes, const Project& project)
        : project_(project), sheet_(bytes, columns::names, result_.errors) {}

    SheetImport run() {
        if (hasItsColumns())
            while (sheet_.next())
                takeRow();
        for (auto& [message, rows] : rows_)
            finish(message, rows);
        if (!result_.errors.none())
            result_.changes.clear();
        return std::move(result_);
    }

private:
    bool hasItsColumns() {
        if (!sheet_.hasHead())
            return false;
        bool hasPages = false;
        for (std::size_t column = columns::Page; column < columns::Script; ++column)
            hasPages = hasPages || sheet_.has(column);
        return sheet_.needs(columns::Message) && sheet_.needs(hasPages ? columns::Page : columns::Script);
    }

    void takeRow() {
        const std::string name(trimBlanksAndTabs(sheet_.cell(columns::Message)));
        const auto message = messageNamed(name);
        if (!message)
            return sheet_.fail(columns::Message, notAMessage(quotation(name)));
        const std::size_t errorsBefore = result_.errors.count();
        const bool isPage = sheet_.has(columns::Page) && sheet_.cell(columns::Script).empty();
        MessageRows& rows = rows_[*message];
        if (isPage)
            takePage(*message, rows);
        else
            takeScript(*message, rows);
        if (result_.errors.count() > errorsBefore)
            rows.hasErrors = true;
    }

    void takePage(Item message, MessageRows& rows) {
        const auto page = wholeNumber(sheet_.cell(columns::Page), 1, maximumPageNumber);
        const auto form = columns::form(sheet_, result_.notes);
        if (!page) {
            rows.hasUnknownPage = true;
            return sheet_.fail(columns::Page, quotation(sheet_.cell(columns::Page)) +
                                                  " is not the number of a page, from 1");
        }
        if (rows.scriptRow > 0)
            return sheet_.fail(columns::Page, nameOf(message) + " has its whole script in row " +
                                                  decimalText(rows.scriptRow));
        rows.pages.push_back({*page, sheet_.row(), form});
    }

    void takeScript(Item message, MessageRows& rows) {
        if (columns::describesPage(sheet_))
            return sheet_.fail(columns::Script, "a row is a page or a whole script, not both");
        if (rows.scriptRow > 0)
            return sheet_.fail(columns::Message, nameOf(message) + " stands in row " +
                                                     decimalText(rows.scriptRow) + " already");
        if (!rows.pages.empty())
            return sheet_.fail(columns::Script, nameOf(message) + " has a page in row " +
                                                    decimalText(rows.pages.front().row) + " already");
        rows.scriptRow = sheet_.row();
        auto script = cellText(scriptField(), sheet_.cell(columns::Script));
        if (const auto* const fault = std::get_if<CellFault>(&script))
            return sheet_.fail(columns::Script, fault->text);
        rows.script = std::move(std::get<std::string>(script));
        reportWhatNoFileKeeps(message, rows.script);
    }

    /// A project file cannot hold such a script: opening it again would move or cut messages.
    void reportWhatNoFileKeeps(Item message, const std::string& script) {
        for (const Finding& finding :
             checkMessage(message, script, project_, NoBitmaps(), PanelSize::maximumColumns).list)
            if (finding.code == Code::ReservedLine || finding.code == Code::LostMessage)
                sheet_.fail(columns::Script,
                            (finding.place.line > 0 ? "line " + decimalText(finding.place.line) + ": " : "") +
                                finding.text);
    }

    void finish(Item message, MessageRows& rows) {
        const std::string& before = scriptOf(project_, message);
        judgePages(nameOf(message), rows);
        if (rows.hasErrors || (rows.pages.empty() && rows.scriptRow == 0))
            return;
        if (rows.scriptRow > 0) {
            if (!equivalent(rows.script, before))
                change(message, before, std::move(rows.script));
            return;
        }
        std::vector<MessageForm> forms;
        for (PageRow& page : rows.pages)
            forms.push_back(*std::move(page.form));
        std::string built = builtScript(forms);
        if (equivalent(built, before, EmptyStart::IsLeftOut))
            return;
        // The empty message has no line end.
        if (equivalent(built, clearScript, EmptyStart::IsLeftOut))
            built = clearScript;
        change(message, before, std::move(built));
    }

    void change(Item message, const std::string& before, std::string after) {
        result_.changes.push_back({message, &scriptField(), before, std::move(after)});
    }

    /// Sorts the pages; tells of every one that is there twice or missing.
    void judgePages(const std::string& name, MessageRows& rows) {
        std::ranges::stable_sort(rows.pages, {}, &PageRow::page);
        std::size_t next = 1;
        std::size_t firstRow = 0; ///< of the page before
        for (const PageRow& page : rows.pages) {
            const bool isTwice = page.page < next;
            if (isTwice)
                failPage(page, rows,
                         "page " + decimalText(page.page) + " of " + name + " stands in row " +
                             decimalText(firstRow) + " already");
            else if (page.page > next && !rows.hasUnknownPage)
                failPage(page, rows, missingText(next, page.page - 1, name));
            if (!isTwice)
                firstRow = page.row;
            next = page.page + 1;
        }
    }

    static std::string missingText(std::size_t first, std::size_t last, const std::string& name) {
        if (first == last)
            return "page " + decimalText(first) + " of " + name + " is missing";
        return "pages " + decimalText(first) + " to " + decimalText(last) + " of " + name + " are missing";
    }

    void failPage(const PageRow& page, MessageRows& rows, std::string text) {
        result_.errors.add(page.row, columns::names[columns::Page], std::move(text));
        rows.hasErrors = true;
    }

    const Project& project_;
    SheetImport result_;
    SheetReader sheet_;
    std::map<Item, MessageRows> rows_;
};

} // namespace

MessageSheet messageSheet(const Project& project, MessageSheetForm form) {
    MessageSheet sheet{std::string(utf8Mark), {}};
    const std::vector<std::string> pageHead(columns::names.begin(), columns::names.end());
    const std::vector<std::string> scriptHead{pageHead[columns::Message], pageHead[columns::Script]};
    appendRecord(sheet.csv, form == MessageSheetForm::Pages ? pageHead : scriptHead);
    const FieldFormats formats = fieldFormats(project);
    for (const Item message : allMessages()) {
        const std::string& script = scriptOf(project, message);
        const std::string name = nameOf(message);
        if (hasLoneLineEnd(script))
            sheet.mendedLineEnds.push_back(message);
        if (form == MessageSheetForm::Pages)
            appendPages(sheet.csv, name, script, formats);
        else
            appendRecord(sheet.csv, std::vector{name, scriptCell(script)});
    }
    return sheet;
}

SheetImport importMessages(std::string_view bytes, const Project& project) {
    return MessageImport(bytes, project).run();
}

} // namespace orvista
