#include "mainwindow/ToolIcons.h"

#include "display/LedRaster.h"
#include "widgets/PanelPicture.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace orvista::ToolIcons {

namespace {

/// Pictures are drawn on a square of this many units.
constexpr qreal drawingUnits = 24;

using Draw = void (*)(QPainter&);

/// Calls a drawing function with a painter scaled to drawingUnits.
class DrawnIcon final : public QIconEngine {
public:
    explicit DrawnIcon(Draw draw) : draw_(draw) {}

    void paint(QPainter* painter, const QRect& area, QIcon::Mode mode, QIcon::State /*state*/) override {
        const qreal side = qMin(area.width(), area.height());
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QPalette palette = QGuiApplication::palette();
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(area.x() + (area.width() - side) / 2, area.y() + (area.height() - side) / 2);
        painter->scale(side / drawingUnits, side / drawingUnits);
        painter->setPen(QPen(palette.color(group, QPalette::ButtonText), 1.5, Qt::SolidLine, Qt::RoundCap,
                             Qt::RoundJoin));
        draw_(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new DrawnIcon(*this); }

private:
    Draw draw_;
};

QIcon drawnIcon(Draw draw) {
    return QIcon(new DrawnIcon(draw));
}

QPainterPath linePath(std::initializer_list<QPointF> points) {
    QPainterPath path;
    for (const QPointF& point : points) {
        if (path.elementCount() == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    return path;
}

void drawPage(QPainter& painter) {
    QPainterPath sheet = linePath({{13.5, 3}, {5, 3}, {5, 21}, {19, 21}, {19, 8.5}});
    sheet.lineTo(13.5, 3);
    painter.drawPath(sheet);
    painter.drawPath(linePath({{13.5, 3}, {13.5, 8.5}, {19, 8.5}}));
    painter.drawPath(linePath({{12, 11.5}, {12, 17.5}}));
    painter.drawPath(linePath({{9, 14.5}, {15, 14.5}}));
}

void drawFolder(QPainter& painter) {
    painter.drawPath(linePath({{5, 19}, {3, 19}, {3, 5}, {9, 5}, {11, 7.5}, {18.5, 7.5}, {18.5, 11}}));
    QPainterPath front = linePath({{4, 19.5}, {6.5, 11}, {22, 11}, {19, 19.5}});
    front.closeSubpath();
    painter.drawPath(front);
}

void drawDisk(QPainter& painter) {
    QPainterPath disk = linePath({{3.5, 3.5}, {16.5, 3.5}, {20.5, 7.5}, {20.5, 20.5}, {3.5, 20.5}});
    disk.closeSubpath();
    painter.drawPath(disk);
    painter.drawPath(linePath({{7.5, 3.5}, {7.5, 9}, {15.5, 9}, {15.5, 3.5}}));
    painter.drawPath(linePath({{7, 20.5}, {7, 13.5}, {17, 13.5}, {17, 20.5}}));
}

void drawTray(QPainter& painter) {
    painter.drawPath(linePath({{3.5, 15}, {3.5, 20.5}, {20.5, 20.5}, {20.5, 15}}));
    painter.drawPath(linePath({{12, 3.5}, {12, 15.5}}));
}

void drawUpload(QPainter& painter) {
    drawTray(painter);
    painter.drawPath(linePath({{7, 8.5}, {12, 3.5}, {17, 8.5}}));
}

void drawDownload(QPainter& painter) {
    drawTray(painter);
    painter.drawPath(linePath({{7, 10.5}, {12, 15.5}, {17, 10.5}}));
}

/// As ledRasterFromText() reads it.
constexpr const char* programPicture = "...G...\n"
                                       "....G..\n"
                                       "OOOOOR.\n"
                                       "OOOOORR\n"
                                       "OOOOOR.\n"
                                       "....G..\n"
                                       "...G...\n";
/// Side of a lens' square in the picture that icons of all sizes are scaled down from.
constexpr int programCell = 32;
/// Round lenses of fewer dots would be a blur.
constexpr int leastLens = 3;

/// The lenses as plain squares on whole dots, without the board's rim.
QImage inSquares(const QImage& picture, const PanelPicture& panel, int side) {
    const PanelSize lenses = panel.panel();
    const int square = side / (lenses.columns + 1);
    const int margin = (side - lenses.columns * square) / 2;
    QImage icon(side, side, QImage::Format_RGB32);
    icon.fill(picture.pixel(panel.rim(), panel.rim()));
    QPainter painter(&icon);
    for (int y = 0; y < lenses.rows; ++y) {
        for (int x = 0; x < lenses.columns; ++x) {
            // Beside the bright core.
            const QPoint lens(panel.rim() + x * panel.cell() + panel.cell() / 4,
                              panel.rim() + y * panel.cell() + panel.cell() / 2);
            painter.fillRect(margin + x * square, margin + y * square, square, square,
                             picture.pixelColor(lens));
        }
    }
    return icon;
}

void drawProgram(QPainter& painter) {
    const LedRaster raster = ledRasterFromText(programPicture);
    const PanelPicture panel(raster.size(), programCell);
    const QImage picture = panel.image(raster);
    // Scaled before it is painted: painters take too few of the picture's dots into a small icon.
    const qreal ratio = painter.device()->devicePixelRatio() * painter.worldTransform().m11();
    const int side = qRound(drawingUnits * ratio);
    painter.drawImage(QRectF(0, 0, drawingUnits, drawingUnits),
                      side / (raster.columns() + 1) < leastLens
                          ? inSquares(picture, panel, side)
                          : picture.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

} // namespace

QIcon newProject() {
    return drawnIcon(drawPage);
}
QIcon openProject() {
    return drawnIcon(drawFolder);
}
QIcon saveProject() {
    return drawnIcon(drawDisk);
}
QIcon upload() {
    return drawnIcon(drawUpload);
}
QIcon download() {
    return drawnIcon(drawDownload);
}
QIcon program() {
    return drawnIcon(drawProgram);
}

} // namespace orvista::ToolIcons
