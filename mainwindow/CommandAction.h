#pragma once

#include <QAction>

namespace orvista {

/// Makes an action of a menu or toolbar, named as the entry or key it stands for. Every entry is an action of
/// its own, since menu and toolbar are enabled separately.
inline QAction* commandAction(QObject* parent, const QString& name, const QString& caption) {
    auto* action = new QAction(caption, parent);
    action->setObjectName(name);
    return action;
}

} // namespace orvista
