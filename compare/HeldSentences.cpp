#include "compare/HeldSentences.h"

#include "model/FileNames.h"
#include "model/Numbers.h"

#include <cstddef>
#include <string_view>

namespace orvista {

namespace {

constexpr std::size_t mostNames = 5;

/// "a, b, c, d and 3 more"
std::string shortList(const std::vector<std::string>& names, std::string_view between = ", ") {
    std::string list;
    for (std::size_t i = 0; i < names.size() && i < mostNames; ++i)
        list.append(i > 0 ? between : "").append(withoutControlCharacters(names[i]));
    if (names.size() > mostNames)
        list += " and " + decimalText(names.size() - mostNames) + " more";
    return list;
}

/// "stdmsg.ilm (STDMSG3, STDMSG7)"
std::string differentText(const HeldAnswer& answer, const ContentsComparison& comparison) {
    std::vector<std::string> items;
    for (const Item item : comparison.itemsIn(answer))
        items.push_back(nameOf(item));
    return items.empty() ? answer.name : answer.name + " (" + shortList(items) + ")";
}

} // namespace

std::string verifiedText(const std::string& display, const ContentsComparison& comparison) {
    if (comparison.holdsEveryByte())
        return display + " holds every byte that an upload sends";
    std::vector<std::string> equal;
    std::vector<std::string> faults;
    for (const auto* const answers : {&comparison.files, &comparison.bitmaps})
        for (const HeldAnswer& answer : *answers) {
            if (answer.state == HeldState::Equal)
                equal.push_back(answer.name);
            else if (answer.state == HeldState::Different)
                faults.push_back(differentText(answer, comparison));
            else if (answer.state == HeldState::Missing)
                faults.push_back(notThereText({answer.name}));
        }
    if (faults.empty())
        return display + " holds the same, written differently: " + shortList(equal);
    return display + " does not hold what an upload sends: " + shortList(faults, "; ");
}

std::string notThereText(const std::vector<std::string>& names) {
    return shortList(names) + (names.size() == 1 ? " is not there" : " are not there");
}

} // namespace orvista
