#include "sheets/VariableSheet.h"

#include "model/Item.h"
#include "model/Lines.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace orvista {

namespace {

enum VariableColumn : std::size_t { Name, Default, Width, Precision, On, Off, Count };

constexpr std::array<std::string_view, Count> columnNames{"name",      "default", "width",
                                                          "precision", "on",      "off"};

/// What the device shows, as the variable editors offer it.
constexpr std::pair<int, int> widths{2, 8};
constexpr std::pair<int, int> precisions{0, 3};

/// The value of a text that is a number as a whole.
std::optional<double> numberOf(std::string_view text) {
    text = trimBlanks(text);
    if (!isNumber(text))
        return std::nullopt;
    try {
        return leadingNumber(text);
    } catch (const Overflow&) {
        return std::nullopt;
    }
}

bool isSameNumber(std::string_view left, std::string_view right) {
    const auto number = numberOf(left);
    return number && number == numberOf(right);
}

class VariableImport {
public:
    VariableImport(std::string_view bytes, const Project& project)
        : project_(project), sheet_(bytes, columnNames, result_.errors) {}

    SheetImport run() {
        if (sheet_.hasHead() && sheet_.needs(Name))
            while (sheet_.next())
                takeRow();
        for (auto& changes : changes_)
            std::ranges::move(changes, std::back_inserter(result_.changes));
        if (!result_.errors.none())
            result_.changes.clear();
        return std::move(result_);
    }

private:
    void takeRow() {
        const std::string name(trimBlanks(sheet_.cell(Name)));
        const auto asFloat = floatVariables.indexOfName(name);
        const auto asBoolean = booleanVariables.indexOfName(name);
        if (!asFloat && !asBoolean)
            return sheet_.fail(Name, notAVariable(quotation(name)));
        const std::size_t position = asFloat ? *asFloat : floatVariableCount + *asBoolean;
        if (const auto first = rows_[position]; first > 0)
            return sheet_.fail(Name, name + " stands in row " + decimalText(first) + " already");
        rows_[position] = sheet_.row();
        present_ = &changes_[position];
        if (asFloat)
            takeFloat(project_.RegVar[*asFloat]);
        else
            takeBoolean(project_.CoilVar[*asBoolean]);
    }

    void takeFloat(const FloatVariable& variable) {
        const FloatVariable fresh;
        refuse(On, variable.name);
        refuse(Off, variable.name);
        if (const auto text = number(Default, variable.defaultValue, fresh.defaultValue)) {
            if (!numberOf(*text))
                sheet_.fail(Default, quotation(sheet_.cell(Default)) + " is not a number");
            change(variable.name, Default, variable.defaultValue, *text);
        }
        takeWhole(Width, variable.name, variable.width, fresh.width);
        takeWhole(Precision, variable.name, variable.precision, fresh.precision);
    }

    /// Which precision goes with which width is the check's to say: projects hold all pairs.
    void takeWhole(VariableColumn column, const std::string& name, const std::string& before,
                   const std::string& fresh) {
        const auto [lowest, highest] = column == Width ? widths : precisions;
        const auto text = number(column, before, fresh);
        if (text && !wholeNumber(*text, lowest, highest))
            sheet_.fail(column, quotation(*text) + " is not a number from " + decimalText(lowest) + " to " +
                                    decimalText(highest));
        else if (text)
            change(name, column, before, *text);
    }

    void takeBoolean(const BooleanVariable& variable) {
        refuse(Width, variable.name);
        refuse(Precision, variable.name);
        if (const auto text = number(Default, variable.defaultValue, BooleanVariable().defaultValue)) {
            if (const auto state = numberOf(*text); state != 0.0 && state != 1.0)
                sheet_.fail(Default, quotation(*text) + " is not 0 or 1");
            change(variable.name, Default, variable.defaultValue, *text);
        }
        takeText(On, variable.name, variable.onText);
        takeText(Off, variable.name, variable.offText);
    }

    void takeText(VariableColumn column, const std::string& name, const std::string& before) {
        if (!sheet_.has(column))
            return;
        const auto text = deviceText(sheet_, column);
        if (text && text->find_first_of(lineEnd) != std::string::npos)
            sheet_.fail(column, "the text is one line");
        if (text)
            change(name, column, before, *text);
    }

    /// The text of a number's cell where it differs from what the project has. An empty cell is what opening
    /// a file makes of a value that is missing there.
    std::optional<std::string> number(VariableColumn column, const std::string& before,
                                      const std::string& fresh) {
        if (!sheet_.has(column))
            return std::nullopt;
        const std::string cell(trimBlanks(sheet_.cell(column)));
        const auto bytes = windows1252FromUtf8(sheet_.cell(column));
        if (bytes == before || isSameNumber(cell, before))
            return std::nullopt;
        return cell.empty() ? fresh : cell;
    }

    void refuse(VariableColumn column, const std::string& name) {
        if (!sheet_.cell(column).empty())
            sheet_.fail(column, name + " has none");
    }

    void change(const std::string& name, VariableColumn column, const std::string& before,
                const std::string& after) {
        if (before == after)
            return;
        present_->push_back({name, columnNames[column], before, after});
        if (trimBlanks(sheet_.cell(column)).empty())
            ++result_.fromEmptyCells;
    }

    const Project& project_;
    SheetImport result_;
    SheetReader sheet_;
    std::array<std::size_t, floatVariableCount + booleanVariableCount> rows_{};
    std::array<std::vector<SheetChange>, floatVariableCount + booleanVariableCount> changes_;
    std::vector<SheetChange>* present_ = nullptr;
};

} // namespace

std::string variableSheet(const Project& project) {
    std::string csv(utf8Mark);
    appendRecord(csv, std::vector<std::string>(columnNames.begin(), columnNames.end()));
    const auto append = [&csv](std::vector<std::string> cells) {
        std::ranges::transform(cells, cells.begin(),
                               [](const std::string& cell) { return utf8FromWindows1252(cell); });
        appendRecord(csv, cells);
    };
    for (const FloatVariable& variable : project.RegVar)
        append({variable.name, variable.defaultValue, variable.width, variable.precision, "", ""});
    for (const BooleanVariable& variable : project.CoilVar)
        append({variable.name, variable.defaultValue, "", "", variable.onText, variable.offText});
    return csv;
}

SheetImport importVariables(std::string_view bytes, const Project& project) {
    return VariableImport(bytes, project).run();
}

} // namespace orvista
