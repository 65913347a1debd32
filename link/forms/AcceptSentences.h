#pragma once

#include "items/Acceptance.h"
#include "link/AcceptanceRun.h"

#include <QString>

/// What the dialogs say of an acceptance.
namespace orvista {

/// What goes on, who interferes, how it ended, and what is not as it was. \param display as the user knows it
QString acceptanceState(const AcceptanceRun& run, const QString& display);

/// "2 as shown, 1 wrong, 1 skipped."; empty where nothing was said.
QString countsText(const Acceptance& acceptance);

/// Of emergency messages that would be switched off: a display does not tell who switched one on. Empty where
/// there is none.
QString emergencyCaution(const AcceptanceRun& run);

/// What would be put back, a line each: "STDMSG3: ON now, OFF before".
QString putBackText(const AcceptanceRun& run);

} // namespace orvista
