#include "check/MasterMessage.h"

#include "check/FindingList.h"
#include "check/MasterCheck.h"
#include "check/ProjectCheck.h"
#include "items/MasterBitmaps.h"

#include <algorithm>

namespace orvista {

Findings checkShownMessage(Item item, std::string_view script, const MasterView& view,
                           const BitmapProvider& bitmaps, int columns) {
    if (!view.isMaster())
        return checkMessage(item, script, view.project(), bitmaps, columns);
    Project alone;
    scriptOf(alone, item) = script;
    const Master master(std::move(alone));
    const Expansion expansion =
        view.display() ? master.expand(*view.display()) : Expansion{master.itself(), {}, 0};
    Findings findings = placeFindings(expansion);
    Findings ofScript =
        checkMessage(item, scriptOf(expansion.project, item), view.shown(), MasterBitmaps(bitmaps), columns);
    for (Finding& finding : ofScript.list)
        finding.place = master.inMaster(finding.place);
    append(findings, ofScript);
    if (findings.notListed() == 0)
        std::ranges::stable_sort(findings.list, {}, &Finding::place);
    return findings;
}

} // namespace orvista
