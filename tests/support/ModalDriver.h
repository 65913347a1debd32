#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace orvista::testing {

/// Drives modal dialogs: once a modal window with the objectName `name` is visible, `act` runs inside its
/// event loop, once. Call it before the click that opens the dialog. Several calls queue up: of those with
/// the name of the shown window the earliest is served, and a window is served once each time it is shown.
/// A dialog opened from within `act` is scripted by a call before or inside it. When none of the waiting
/// windows appears for 10 s the test fails and the window that stands in the way is dismissed, as is one
/// whose `act` failed.
void onModal(const QString& name, std::function<void(QWidget*)> act);

/// True when every scripted dialog was shown.
bool allModalsServed();

} // namespace orvista::testing
