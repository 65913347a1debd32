#include "dialogs/frmLic.h"
#include "tests/support/LedText.h"
#include "widgets/LedView.h"

#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

using namespace orvista;
using orvista::testing::ledText;

class AboutBoxTest : public QObject {
    Q_OBJECT
private slots:
    void showsItsTexts() {
        frmLic box;
        QCOMPARE(box.windowTitle(), "About Quillmark Corp.");
        QCOMPARE(box.findChild<QLineEdit*>("txtProduct")->text(), "Orvista 1.03 for Ulvo LX-400 series");
        auto* const notice = box.findChild<QPlainTextEdit*>("txtNotice");
        QVERIFY(!notice->toPlainText().isEmpty());
        QVERIFY(notice->isReadOnly());
    }

    void drawsAPicture() {
        frmLic box;
        box.show();
        const QImage picture = box.findChild<QWidget*>("imgPanel")->grab().toImage();
        int lit = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                lit += picture.pixelColor(x, y).red() > 200 && picture.pixelColor(x, y).blue() < 100 ? 1 : 0;
        QVERIFY(lit > 100);
    }

    void thePictureIsThePanelsWithTheDisplaysFont() {
        // The display's small font has a dot on the base line of its L, and none to the right of the stem.
        const LedRaster shown = panelOfText("L", Led::Orange);
        QCOMPARE(ledText(shown), std::string(".........\n"
                                             ".........\n"
                                             "..O......\n"
                                             "..O......\n"
                                             "..O......\n"
                                             "..O......\n"
                                             "..O......\n"
                                             "..O......\n"
                                             "..OOOOO..\n"
                                             ".........\n"
                                             ".........\n"));
        frmLic box;
        auto* const panel = box.findChild<QWidget*>("imgPanel");
        panel->setFixedSize(48 * 6, 14 * 6);
        box.show();
        const LedRaster product = panelOfText("LX-400D", Led::Orange);
        QImage expected(panel->size(), QImage::Format_RGB32);
        expected.fill(box.palette().window().color());
        QPainter painter(&expected);
        PanelPicture(product.size(), 6).paint(painter, product);
        painter.end();
        QCOMPARE(panel->grab().toImage().convertToFormat(QImage::Format_RGB32), expected);
    }

    void okEnterAndEscapeClose() {
        frmLic box;
        box.show();
        QTest::mouseClick(box.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
        QVERIFY(!box.isVisible());
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
            box.show();
            QTest::keyClick(&box, key);
            QVERIFY(!box.isVisible());
        }
    }
};

QTEST_MAIN(AboutBoxTest)
#include "AboutBoxTest.moc"
