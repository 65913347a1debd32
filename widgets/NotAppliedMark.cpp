#include "widgets/NotAppliedMark.h"

#include <QCoreApplication>

#include <algorithm>

namespace orvista {

QString notAppliedMark(const std::vector<std::string>& notAppliedItems, const std::string& item) {
    if (std::ranges::find(notAppliedItems, item) == notAppliedItems.end())
        return {};
    return QCoreApplication::translate("NotAppliedMark", " (not applied)");
}

} // namespace orvista
