#include "items/HeldValues.h"

namespace orvista {

DisplayValues heldValues(const std::vector<DisplayItem>& items) {
    DisplayValues values;
    for (const DisplayItem& item : items) {
        if (item.isFloat())
            values.floats[item.item.index] = item.value();
        else if (!item.isMessage())
            values.booleans[item.item.index] = item.isOn();
    }
    return values;
}

MessageCoils heldCoils(const std::vector<DisplayItem>& items) {
    MessageCoils coils;
    for (const DisplayItem& item : items) {
        if (item.item.kind == Kind::Regular)
            coils.regular[item.item.index] = item.isOn();
        else if (item.item.kind == Kind::Emergency)
            coils.emergency[item.item.index] = item.isOn();
    }
    return coils;
}

} // namespace orvista
