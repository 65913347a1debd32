#pragma once

#include <QString>

#include <utility>

/// Small pieces all pages are built from.
namespace orvista {

/// Makes a widget and gives it its control name.
template <typename Widget, typename... Arguments>
Widget* named(const QString& name, Arguments&&... arguments) {
    auto* widget = new Widget(std::forward<Arguments>(arguments)...);
    widget->setObjectName(name);
    return widget;
}

/// A control of an array is named as it is written: "chkEmergMsg(0)".
QString arrayName(const QString& name, int index);

} // namespace orvista
