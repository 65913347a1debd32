#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace orvista::testing {

/// Drives modal dialogs: once a modal window with the objectName `name` is visible, `act` runs inside its
/// event loop, once. A window that does not appear within the deadline (10 s) fails the test. Call it before
/// the click that opens the dialog; several calls queue up and are served in order, so a dialog opened from
/// within `act` is scripted by a call made inside it.
void onModal(const QString& name, std::function<void(QWidget*)> act);

/// True when every scripted dialog was shown.
bool allModalsServed();

} // namespace orvista::testing
