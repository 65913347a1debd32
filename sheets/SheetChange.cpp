#include "sheets/SheetChange.h"

#include "items/ProjectMessages.h"
#include "model/ItemKind.h"

#include <algorithm>

namespace orvista {

namespace {

void changeFloat(FloatVariable& variable, const SheetChange& change) {
    if (change.column == "default")
        variable.defaultValue = change.after;
    else if (change.column == "width")
        variable.width = change.after;
    else if (change.column == "precision")
        variable.precision = change.after;
}

void changeBoolean(BooleanVariable& variable, const SheetChange& change) {
    if (change.column == "default")
        variable.defaultValue = change.after;
    else if (change.column == "on")
        variable.onText = change.after;
    else if (change.column == "off")
        variable.offText = change.after;
}

} // namespace

std::vector<std::string> changedItems(const std::vector<SheetChange>& changes) {
    std::vector<std::string> items;
    for (const SheetChange& change : changes) {
        if (std::ranges::find(items, change.item) == items.end())
            items.push_back(change.item);
    }
    return items;
}

void applyChanges(Project& project, const std::vector<SheetChange>& changes) {
    for (const SheetChange& change : changes) {
        if (const auto message = messagePosition(change.item))
            messageScript(project, *message) = change.after;
        else if (const auto index = floatVariables.indexOfName(change.item))
            changeFloat(project.RegVar[*index], change);
        else if (const auto boolean = booleanVariables.indexOfName(change.item))
            changeBoolean(project.CoilVar[*boolean], change);
    }
}

} // namespace orvista
