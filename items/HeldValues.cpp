#include "items/HeldValues.h"

namespace orvista {

DisplayValues heldValues(const std::vector<DisplayItem>& items) {
    DisplayValues values;
    for (const DisplayItem& item : items) {
        if (item.isFloat())
            values.floats[item.index] = item.value();
        else if (!item.isMessage())
            values.booleans[item.index] = item.isOn();
    }
    return values;
}

MessageCoils heldCoils(const std::vector<DisplayItem>& items) {
    MessageCoils coils;
    for (const DisplayItem& item : items) {
        if (item.kind == &regularMessages)
            coils.regular[item.index] = item.isOn();
        else if (item.kind == &emergencyMessages)
            coils.emergency[item.index] = item.isOn();
    }
    return coils;
}

} // namespace orvista
