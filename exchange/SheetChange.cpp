#include "exchange/SheetChange.h"

#include "exchange/ProjectMessages.h"
#include "model/ItemKind.h"

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
