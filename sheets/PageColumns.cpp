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
std::string_view shownText(std::string_view colour) {
    return colour;
}
template <typename Item>
std::string_view shownText(const Item& item) {
    return trimLeadingBlanks(item.shown);
}

std::string listed(const auto& list, std::size_t position) {
    return std::string(shownText(list.at(position)));
}

std::string_view blanksTrimmed(const std::string& cell) {
    return trimBlanks(cell);
}

/// Reads the cells of one row into a form.
class RowReader {
public:
    explicit RowReader(SheetReader& sheet) : sheet_(sheet) {}

    std::optional<MessageForm> read() {
        readContent();
        choose(Font, wizard::fonts, form_.cbFont);
        choose(Foreground, wizard::colours, form_.cbFgClr);
        choose(Background, wizard::colours, form_.cbBgClr);
        for (std::size_t slot = 0; slot < fieldSlotCount; ++slot)
            readField(FirstField + slot * fieldColumns, form_.fields[slot]);
        choose(Entering, wizard::effects, form_.cbInEffect);
        choose(EnteringSpeed, wizard::speeds, form_.cbIFSpeed);
        choose(Special, wizard::specialEffects, form_.cbSpEffect);
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

    void readField(std::size_t first, FieldChoice& field) {
        const std::string_view word = blanksTrimmed(sheet_.cell(first));
        const auto& sources = wizard::fieldSources();
        const auto found = std::ranges::find_if(
            sources, [word](const std::string& source) { return equalsIgnoringCase(source, word); });
        if (found != sources.end())
            field.cbVar = static_cast<std::size_t>(found - sources.begin());
        else if (!word.empty())
            fail(first, quotation(word) + " is not a variable, DATE or TIME");
        choose(first + 1, wizard::colours, field.cbVarFgClr);
        choose(first + 2, wizard::colours, field.cbVarBgClr);
    }

    /// An empty cell leaves the position as a fresh wizard has it.
    void choose(std::size_t column, const auto& list, std::size_t& position) {
        const std::string_view word = blanksTrimmed(sheet_.cell(column));
        if (word.empty())
            return;
        std::string words;
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (equalsIgnoringCase(shownText(list[i]), word)) {
                position = i;
                return;
            }
            words.append(words.empty() ? "" : ", ").append(shownText(list[i]));
        }
        fail(column, quotation(word) + " is not one of " + words);
    }

    SheetReader& sheet_;
    MessageForm form_;
    bool good_ = true;
};

void setEffect(std::vector<std::string>& row, std::size_t column, std::size_t effect, std::size_t speed) {
    row[column] = listed(wizard::effects, effect);
    if (!wizard::effects[effect].script.empty())
        row[column + 1] = listed(wizard::speeds, speed);
}

void setContent(std::vector<std::string>& row, const MessageForm& form) {
    row[Content] = utf8FromWindows1252(form.txtText);
    row[Font] = listed(wizard::fonts, form.cbFont);
    const std::size_t fields = scanPlaceholders(form.txtText).fieldCount();
    for (std::size_t slot = 0; slot < fields; ++slot) {
        const std::size_t first = FirstField + slot * fieldColumns;
        row[first] = wizard::fieldSources().at(form.fields[slot].cbVar);
        row[first + 1] = listed(wizard::colours, form.fields[slot].cbVarFgClr);
        row[first + 2] = listed(wizard::colours, form.fields[slot].cbVarBgClr);
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
    row[Foreground] = listed(wizard::colours, form.cbFgClr);
    row[Background] = listed(wizard::colours, form.cbBgClr);
    setEffect(row, Entering, form.cbInEffect, form.cbIFSpeed);
    row[Special] = listed(wizard::specialEffects, form.cbSpEffect);
    if (wizard::specialEffects[form.cbSpEffect].heldForDelay)
        row[Delay] = listed(wizard::delays, form.cbDelay);
    setEffect(row, Leaving, form.cbOutEffect, form.cbOFSpeed);
    return row;
}

std::optional<MessageForm> form(SheetReader& sheet) {
    return RowReader(sheet).read();
}

bool describesPage(const SheetReader& sheet) {
    for (std::size_t column = Page; column < Script; ++column)
        if (!sheet.cell(column).empty())
            return true;
    return false;
}

} // namespace orvista::pageColumns
