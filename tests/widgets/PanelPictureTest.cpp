#include "widgets/PanelPicture.h"
#include "display/PanelDrawing.h"
#include "widgets/PanelView.h"

#include <QPainter>
#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <random>

using namespace orvista;

namespace {

LedRaster randomRaster(PanelSize panel, unsigned seed) {
    std::minstd_rand random(seed);
    LedRaster raster(panel);
    for (int y = 0; y < panel.rows; ++y)
        for (int x = 0; x < panel.columns; ++x)
            raster.set(x, y, static_cast<Led>(random() % 4));
    return raster;
}

LedRaster oneLight(PanelSize panel, int x, int y, Led led) {
    LedRaster raster(panel);
    raster.set(x, y, led);
    return raster;
}

/// The squares of a lens and its eight neighbours.
QImage around(const PanelPicture& picture, const LedRaster& raster, int x, int y) {
    const int cell = picture.cell();
    return picture.image(raster).copy(picture.rim() + (x - 1) * cell, picture.rim() + (y - 1) * cell,
                                      3 * cell, 3 * cell);
}

} // namespace

class PanelPictureTest : public QObject {
    Q_OBJECT
private slots:
    void looksTheSameWhateverWasDrawnBefore();
    void looksAsAPictureFileDoes();
    void everyLightLooksTheSameWhereverItStands();
    void lightsFallOnTheirNeighboursAndTheRim();
    void aRasterOfAnotherSizeIsCutOrLeavesLensesDark();
    void aPanelTooWideForItsPlaceIsShownWhole();
};

void PanelPictureTest::looksTheSameWhateverWasDrawnBefore() {
    for (const int cell : {1, 2, 3, 8}) {
        const PanelPicture worn({40}, cell);
        for (unsigned seed = 0; seed < 4; ++seed) {
            const LedRaster raster = randomRaster({40}, seed);
            QCOMPARE(worn.image(raster), PanelPicture({40}, cell).image(raster));
        }
        QCOMPARE(worn.image(LedRaster({40})), PanelPicture({40}, cell).image(LedRaster({40})));
    }
}

void PanelPictureTest::looksAsAPictureFileDoes() {
    for (const int cell : {2, 4, 8}) {
        const LedRaster raster = randomRaster({40}, 7);
        PixelImage file = drawPanel(raster, cell);
        const PanelPicture picture({40}, cell);
        const QImage shown = picture.image(raster);
        QCOMPARE(QSize(file.width, file.height), shown.size());
        for (int y = picture.rim(); y < file.height - picture.rim(); ++y)
            for (int x = picture.rim(); x < file.width - picture.rim(); ++x) {
                const Pixel one = file.at(x, y);
                const QColor other = shown.pixelColor(x, y);
                const int apart =
                    std::max({std::abs(one.red - other.red()), std::abs(one.green - other.green()),
                              std::abs(one.blue - other.blue())});
                QVERIFY2(apart <= 8, qPrintable(QStringLiteral("%1 at %2, %3").arg(apart).arg(x).arg(y)));
            }
    }
}

void PanelPictureTest::everyLightLooksTheSameWhereverItStands() {
    for (const int cell : {3, 7, 8}) {
        const PanelPicture picture({20}, cell);
        const QImage expected = around(picture, oneLight({20}, 5, 5, Led::Green), 5, 5);
        for (const auto& [x, y] : {std::pair{1, 1}, {18, 14}, {9, 3}})
            QCOMPARE(around(picture, oneLight({20}, x, y, Led::Green), x, y), expected);
        QVERIFY(around(picture, oneLight({20}, 5, 5, Led::Red), 5, 5) != expected);
        QVERIFY(around(picture, LedRaster({20}), 5, 5) != expected);
    }
}

void PanelPictureTest::lightsFallOnTheirNeighboursAndTheRim() {
    const PanelPicture picture({8}, 10);
    const QImage dark = picture.image(LedRaster({8}));
    // Two lenses beside each other: where their lights overlap it is brighter than by one alone.
    LedRaster both = oneLight({8}, 3, 4, Led::Red);
    both.set(4, 4, Led::Red);
    const QPoint between(picture.rim() + 4 * 10, picture.rim() + 4 * 10 + 5);
    const auto redness = [&](const LedRaster& raster, QPoint at) {
        return picture.image(raster).pixelColor(at).red();
    };
    const int alone = redness(oneLight({8}, 3, 4, Led::Red), between);
    QVERIFY(alone > dark.pixelColor(between).red() + 10);
    QVERIFY(redness(both, between) > alone + 10);
    // A light in each corner is seen on the rim beside it, and nowhere on the far side.
    for (const auto& [x, y] : {std::pair{0, 0}, {7, 0}, {0, 15}, {7, 15}}) {
        const LedRaster corner = oneLight({8}, x, y, Led::Red);
        const QPoint lens(picture.rim() + x * 10 + 5, picture.rim() + y * 10 + 5);
        const int outwardX = x == 0 ? -7 : 7;
        const int outwardY = y == 0 ? -7 : 7;
        for (const QPoint& rim :
             {lens + QPoint(outwardX, 0), lens + QPoint(0, outwardY), lens + QPoint(outwardX, outwardY)})
            QVERIFY(redness(corner, rim) > dark.pixelColor(rim).red());
        const QPoint far = QPoint(dark.width() - 1, dark.height() - 1) - lens;
        QCOMPARE(picture.image(corner).pixel(far), dark.pixel(far));
    }
}

void PanelPictureTest::aRasterOfAnotherSizeIsCutOrLeavesLensesDark() {
    const PanelPicture picture({8, 16}, 6);
    LedRaster wide({20, 30});
    wide.fill(0, 0, 20, 30, Led::Green);
    LedRaster full({8, 16});
    full.fill(0, 0, 8, 16, Led::Green);
    const QImage shown = picture.image(wide);
    QCOMPARE(shown.size(), picture.size());
    QCOMPARE(shown.pixel(shown.rect().center()), picture.image(full).pixel(shown.rect().center()));
    LedRaster narrow({4, 4});
    narrow.fill(0, 0, 4, 4, Led::Green);
    LedRaster part({8, 16});
    part.fill(0, 0, 4, 4, Led::Green);
    QCOMPARE(picture.image(narrow), picture.image(part));
}

void PanelPictureTest::aPanelTooWideForItsPlaceIsShownWhole() {
    PanelView view(oneLight({512}, 511, 8, Led::Red));
    view.setMinimumSize(1, 1);
    view.resize(300, 40);
    const QImage picture = view.grab().toImage();
    int reddest = 0;
    for (int x = 290; x < 300; ++x)
        for (int y = 10; y < 30; ++y)
            reddest = std::max(reddest, picture.pixelColor(x, y).red() - picture.pixelColor(x, y).blue());
    QVERIFY2(reddest > 30, qPrintable(QString::number(reddest)));
    view.showRaster(LedRaster({32}));
    QCOMPARE(view.shown(), LedRaster({32}));
    QCOMPARE(view.sizeHint().height(), view.sizeHint().width() * 19 / 35);
}

QTEST_MAIN(PanelPictureTest)
#include "PanelPictureTest.moc"
