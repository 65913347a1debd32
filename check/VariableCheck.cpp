#include "check/VariableCheck.h"

#include "check/FindingList.h"
#include "display/DisplayValues.h"
#include "display/LiveField.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/VariableEditing.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace orvista {

namespace {

template <typename Choices>
bool isOneOf(const Choices& choices, std::string_view text) {
    return std::ranges::find(choices, text) != std::end(choices);
}

bool isStars(std::string_view text) {
    return text.find_first_not_of('*') == std::string_view::npos;
}

void checkFloatDefault(const FloatVariable& variable, FindingList& found) {
    const std::string_view text = trimBlanks(variable.defaultValue);
    const FloatFormat format = floatFormat(variable);
    const std::string shown = floatFieldText(defaultFloat(variable), format);
    if (!isNumber(text)) {
        found.add(Code::BadDefault, {}, [&] {
            return "The default value " + deviceQuotation(text) +
                   " is not a number, so that the display begins with " + std::string(trimBlanks(shown)) +
                   ": write a number, such as 12.5.";
        });
    } else if (isStars(shown)) {
        found.add(Code::BadDefault, {}, [&] {
            return "The default value " + deviceQuotation(text) + " does not fit into a width of " +
                   decimalText(format.width) + " with precision " + decimalText(format.precision) +
                   ", so that the display begins with stars: choose a greater width or a smaller number.";
        });
    }
}

void checkFloatFormat(const FloatVariable& variable, FindingList& found) {
    const std::string_view width = trimBlanks(variable.width);
    const std::string_view precision = trimBlanks(variable.precision);
    const bool isWidth = isOneOf(widthChoices, width);
    const bool isPrecision = isOneOf(precisionChoices, precision);
    if (!isWidth)
        found.add(Code::BadFormat, {}, [&] {
            return "The display does not support width " + deviceQuotation(width) +
                   " and may use another: choose a width from 2 to 8.";
        });
    if (!isPrecision)
        found.add(Code::BadFormat, {}, [&] {
            return "The display does not support precision " + deviceQuotation(precision) +
                   " and may use another: choose a precision from 0 to 3.";
        });
    if (!isWidth || !isPrecision)
        return;
    const std::string possible = precisionForWidth(width, precision);
    if (possible != precision)
        found.add(Code::BadFormat, {}, [&] {
            return "The display cannot show precision " + std::string(precision) + " in a width of " +
                   std::string(width) + ": set the precision to " + possible + ".";
        });
}

} // namespace

Findings checkVariable(Item item, const FloatVariable& variable) {
    FindingList found(item);
    checkFloatDefault(variable, found);
    checkFloatFormat(variable, found);
    return std::move(found).sorted();
}

Findings checkVariable(Item item, const BooleanVariable& variable) {
    FindingList found(item);
    const std::string_view text = trimBlanks(variable.defaultValue);
    if (!isOneOf(booleanDefaultChoices, text))
        found.add(Code::BadDefault, {}, [&] {
            return "The default value " + deviceQuotation(text) +
                   " is neither 0 nor 1; the display takes it for " +
                   (defaultBoolean(variable) ? "ON" : "OFF") + ": write 0 or 1.";
        });
    return std::move(found).sorted();
}

} // namespace orvista
