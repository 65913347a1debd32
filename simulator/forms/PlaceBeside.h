#pragma once

#include <QRect>
#include <QSize>

#include <optional>

namespace orvista {

struct WindowSizes {
    QSize usual;
    QSize least;
};

/// Where a window stands beside another one: as large as usual or, where there is less room, smaller, so that
/// it hides nothing that the user works with. Where it has no room, the upper corner in which it hides less
/// of the other, as small as it can be: what tells how to go on stands at the bottom. \param other its edges
/// may lie beyond the room's \param room of the screen \returns nothing where it would be in front of the
/// other with all of itself
std::optional<QRect> placeBeside(const QRect& other, const QRect& room, const WindowSizes& sizes);

} // namespace orvista
