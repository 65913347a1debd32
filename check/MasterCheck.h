#pragma once

#include "check/ProjectCheck.h"
#include "items/Master.h"
#include "items/MasterBitmaps.h"

namespace orvista {

/// The code of what keeps a place from being filled.
Code codeOf(PlaceFault fault);
Finding findingOf(const PlaceError& error);
/// All that keeps the places of an expansion from being filled.
Findings placeFindings(const Expansion& expansion);

/// Checks a master for one display after the other: what the same values make of a message is looked at once.
/// All findings are at their places in the master.
class MasterCheck {
public:
    /// Both must outlive the object.
    MasterCheck(const Master& master, const BitmapProvider& bitmaps) : master_(master), bitmaps_(bitmaps) {}

    /// Of one display's project, and what keeps it from being made. \param expansion of the master
    Findings check(const Expansion& expansion, int columns, Notes notes = Notes::LeftOut);
    /// Of the master itself, on no display.
    Findings checkItself(int columns, Notes notes = Notes::LeftOut);

private:
    Findings checked(const Project& project, int columns, Notes notes);

    const Master& master_;
    MasterBitmaps bitmaps_;
    ProjectCheck check_;
};

} // namespace orvista
