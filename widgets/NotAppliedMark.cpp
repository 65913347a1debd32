#include "widgets/NotAppliedMark.h"

#include <QCoreApplication>

#include <algorithm>

namespace orvista {

QString notAppliedMark(const std::vector<Item>& notAppliedItems, Item item) {
    if (std::ranges::find(notAppliedItems, item) == notAppliedItems.end())
        return {};
    return QCoreApplication::translate("NotAppliedMark", " (not applied)");
}

} // namespace orvista
