#include "dialogs/frmLic.h"

#include <QImage>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

using namespace orvista;

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
