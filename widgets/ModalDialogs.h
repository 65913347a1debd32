#pragma once

#include <QApplication>

namespace orvista {

/// True while a modal dialog or the window of a transfer is open: commands, timers and tables that stand
/// beside it do nothing then.
inline bool isModalDialogOpen() {
    return QApplication::activeModalWidget() != nullptr;
}

} // namespace orvista
