#include "sheets/PageColumns.h"

#include "model/Lines.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/Windows1252.h"
#include "script/WizardLists.h"

#include <algorithm>

namespace orvista::pageColumns {

namespace {

/// What a list's entries are called in a sheet: as the wizard shows them, without the blank before a number.
std::string_view shownText(const auto& entry) {
    const std::string_view shown = entry.shown;
    return shown.starts_with(' ') ? trimLeadingBlanks(shown) : shown;
}

std::string listed(const auto& list, std::size_t position) {
    return std::string(shownText(list.at(position)));
}

std::optional<std::size_t> positionOf(std::string_view word, const auto& list) {
    const auto named = [&](auto isWord) {
        return std::ranges::find_if(list, [&](const auto& entry) { return isWord(shownText(entry)); });
    };
    // Sheets that were exported have each word as it is shown.
    auto found = named([word](std::string_view text) { return text == word; });
    if (found == list.end())
        found = named([word](std::string_view text) { return equalsIgnoringCase(text, word); });
    return found == list.end() ? std::nullopt : std::optional<std::size_t>(found - list.begin());
}

std::string_view blanksTrimmed(const std::string& cell) {
    return trimBlanks(cell);
}

/// Reads the cells of one row into a form.
class RowReader {
public:
    RowReader(SheetReader& sheet, SheetErrors& notes) : sheet_(sheet), notes_(notes) {}

    std::optional<MessageForm> read() {
        readContent();
        choose(Font, fontStyles, form_.cbFont);
        choose(Foreground, colourStyles, form_.cbFgClr);
        choose(Background, colourStyles, form_.cbBgClr);
        const std::size_t fields = scanPlaceholders(form_.txtText).fieldCount();
        for (std::size_t slot = 0; slot < fieldSlotCount; ++slot)
            readField(FirstField + slot * fieldColumns, form_.fields[slot], slot < fields);
        choose(Entering, wizard::effects, form_.cbInEffect);
        choose(EnteringSpeed, wizard::speeds, form_.cbIFSpeed);
        choose(Special, actStyles, form_.cbSpEffect);
        choose(Delay, wizard::delays, form_.cbDelay);
        choose(Leaving, wizard::effects, form_.cbOutEffect);
        choose(LeavingSpeed, wizard::speeds, form_.cbOFSpeed);
        return good_ ? std::optional(form_) : std::nullopt;
    }

private:
    void fail(std::size_t column, std::string text) {
        sheet_.fail(column, std::move(text));
        good_ = false;
    }

    void readContent() {
        form_.txtPath = sheet_.cell(Bitmap);
        form_.bitmap = !form_.txtPath.empty();
        if (form_.bitmap && !sheet_.cell(Content).empty())
            fail(Bitmap, "a page has a content or a bitmap, not both");
        if (form_.bitmap && !bitmapName(PathRules::windows(), form_.txtPath))
            fail(Bitmap, quotation(form_.txtPath) + " holds a character that the display does not have");
        const auto text = deviceText(sheet_, Content);
        good_ = good_ && text;
        form_.txtText = text.value_or("");
        if (form_.txtText.find_first_of(lineEnd) != std::string::npos)
            fail(Content, "a page's content is one line");
        if (scanPlaceholders(form_.txtText).surplus > 0)
            fail(Content, "a page has four live fields: the fifth %v is too many");
    }

    void readField(std::size_t first, FieldChoice& field, bool isShown) {
        const std::string_view word = blanksTrimmed(sheet_.cell(first));
        if (word.empty()) {
            if (isShown)
                notes_.add(sheet_.row(), {},
                           std::string(names[first]) +
                               " is empty: " + listed(wizard::fieldSources(), field.cbVar) + " is taken");
        } else if (const auto found = positionOf(word, wizard::fieldSources())) {
            field.cbVar = *found;
        } else {
            fail(first, quotation(word) + " is not a variable, " + choiceOf(clockStyles));
        }
        choose(first + 1, colourStyles, field.cbVarFgClr);
        choose(first + 2, colourStyles, field.cbVarBgClr);
    }

    /// An empty cell leaves the position as a fresh wizard has it.
    void choose(std::size_t column, const auto& list, std::size_t& position) {
        const std::string_view word = blanksTrimmed(sheet_.cell(column));
        if (word.empty())
            return;
        if (const auto found = positionOf(word, list)) {
            position = *found;
            return;
        }
        std::string words;
        for (const auto& entry : list)
            words.append(words.empty() ? "" : ", ").append(shownText(entry));
        fail(column, quotation(word) + " is not one of " + words);
    }

    SheetReader& sheet_;
    SheetErrors& notes_;
    MessageForm form_;
    bool good_ = true;
};

void setEffect(std::vector<std::string>& row, std::size_t column, std::size_t effect, std::size_t speed) {
    row[column] = listed(wizard::effects, effect);
    if (wizard::effects[effect].style != nullptr)
        row[column + 1] = listed(wizard::speeds, speed);
}

void setContent(std::vector<std::string>& row, const MessageForm& form) {
    row[Content] = utf8FromWindows1252(form.txtText);
    row[Font] = listed(fontStyles, form.cbFont);
    const std::size_t fields = scanPlaceholders(form.txtText).fieldCount();
    for (std::size_t slot = 0; slot < fields; ++slot) {
        const std::size_t first = FirstField + slot * fieldColumns;
        row[first] = listed(wizard::fieldSources(), form.fields[slot].cbVar);
        row[first + 1] = listed(colourStyles, form.fields[slot].cbVarFgClr);
        row[first + 2] = listed(colourStyles, form.fields[slot].cbVarBgClr);
    }
}

} // namespace

std::vector<std::string> cells(const MessageForm& form) {
    std::vector<std::string> row(Count);
    if (form.bitmap)
        row[Bitmap] = form.txtPath;
    else if (!form.txtText.empty())
        setContent(row, form);
    else
        return row;
    row[Foreground] = listed(colourStyles, form.cbFgClr);
    row[Background] = listed(colourStyles, form.cbBgClr);
    setEffect(row, Entering, form.cbInEffect, form.cbIFSpeed);
    row[Special] = listed(actStyles, form.cbSpEffect);
    if (actStyles[form.cbSpEffect].act == StepKind::Still)
        row[Delay] = listed(wizard::delays, form.cbDelay);
    setEffect(row, Leaving, form.cbOutEffect, form.cbOFSpeed);
    return row;
}

std::optional<MessageForm> form(SheetReader& sheet, SheetErrors& notes) {
    return RowReader(sheet, notes).read();
}

bool describesPage(const SheetReader& sheet) {
    for (std::size_t column = Page; column < Script; ++column)
        if (!sheet.cell(column).empty())
            return true;
    return false;
}

} // namespace orvista::pageColumns
