#include "tools/help-pictures/ScriptPicture.h"

#include "display/RasterAt.h"
#include "widgets/PanelPicture.h"

#include <QPainter>

namespace orvista::help {

namespace {

constexpr PanelSize panel{128};
constexpr int cell = 4;
constexpr int gap = 8;

Project exampleProject() {
    Project project;
    project.RegVar[0].width = "4";
    project.RegVar[0].precision = "1";
    project.RegVar[1].width = "5";
    project.RegVar[1].precision = "2";
    project.CoilVar[0].onText = "RUN";
    project.CoilVar[0].offText = "STOP";
    return project;
}

DisplayValues exampleValues() {
    DisplayValues values;
    values.floats[0] = 21.5F;
    values.floats[1] = 1.85F;
    values.booleans.set(0);
    values.clock = {2026, 1, 31, 14, 5, 0};
    return values;
}

} // namespace

QImage scriptPicture(const HelpScript& script, const BitmapProvider& bitmaps) {
    Programme programme(panel, fieldFormats(exampleProject()));
    programme.add({}, script.script, bitmaps);
    const PanelPicture board(panel, cell);
    const int pitch = board.size().height() + gap;
    const int count = static_cast<int>(script.moments.size());
    QImage picture(board.size().width(), count * pitch - gap, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    for (const std::int64_t moment : script.moments) {
        board.paint(painter, rasterAt(programme, exampleValues(), moment));
        painter.translate(0, pitch);
    }
    return picture;
}

} // namespace orvista::help
