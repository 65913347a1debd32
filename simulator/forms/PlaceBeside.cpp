#include "simulator/forms/PlaceBeside.h"

#include <QStyle>

#include <vector>

namespace orvista {

namespace {

struct FreePart {
    QRect part;
    Qt::Alignment alignment; ///< of a window in it that is to be near the other
};

/// What another window leaves of the room, the best part first.
std::vector<FreePart> freeParts(const QRect& other, const QRect& room) {
    std::vector<FreePart> parts{
        {{other.topRight() + QPoint(1, 0), room.bottomRight()}, Qt::AlignLeft | Qt::AlignTop},
        {{QPoint(room.left(), other.top()), QPoint(other.left() - 1, room.bottom())},
         Qt::AlignRight | Qt::AlignTop},
        {{other.bottomLeft() + QPoint(0, 1), room.bottomRight()}, Qt::AlignLeft | Qt::AlignTop},
        {{QPoint(other.left(), room.top()), QPoint(room.right(), other.top() - 1)},
         Qt::AlignLeft | Qt::AlignBottom}};
    std::erase_if(parts, [](const FreePart& free) { return !free.part.isValid(); });
    for (FreePart& free : parts)
        free.part &= room;
    return parts;
}

QRect aligned(Qt::Alignment alignment, QSize size, const QRect& room) {
    return QStyle::alignedRect(Qt::LeftToRight, alignment, size, room);
}

int areaOf(QSize size) {
    return size.width() * size.height();
}

std::optional<QRect> cornerThatHidesLess(const QRect& other, const QRect& room, QSize window) {
    std::optional<QRect> best;
    int hidden = areaOf(window);
    for (const Qt::Alignment corner : {Qt::AlignRight | Qt::AlignTop, Qt::AlignLeft | Qt::AlignTop}) {
        const QRect place = aligned(corner, window, room);
        if (const int here = areaOf((place & other).size()); here < hidden) {
            best = place;
            hidden = here;
        }
    }
    return best;
}

} // namespace

std::optional<QRect> placeBeside(const QRect& other, const QRect& room, const WindowSizes& sizes) {
    const QSize least = sizes.least.boundedTo(sizes.usual);
    const std::vector<FreePart> parts = freeParts(other, room);
    for (const QSize wanted : {sizes.usual, least})
        for (const auto& [part, alignment] : parts)
            if (wanted.boundedTo(part.size()) == wanted)
                return aligned(alignment, sizes.usual.boundedTo(part.size()), part);
    return cornerThatHidesLess(other, room, least);
}

} // namespace orvista
