#include "tests/support/EditorFixture.h"

#include <QScreen>

using namespace orvista;
using namespace orvista::testing;

/// Run on small screens: see the build file.
class ScreenSizeTest : public QObject {
    Q_OBJECT
private slots:
    void theScreenIsTheSmallOne() {
        const QSize pixels =
            QGuiApplication::primaryScreen()->size() * QGuiApplication::primaryScreen()->devicePixelRatio();
        QVERIFY(qAbs(pixels.width() - 800) <= 1);
        QVERIFY(qAbs(pixels.height() - 600) <= 1);
    }

    void theWindowOpensWithinIt() {
        EditorFixture editor;
        editor.startWithNewProject();
        const QRect available = editor.window->screen()->availableGeometry();
        QVERIFY2(available.width() >= editor.window->frameGeometry().width() &&
                     available.height() >= editor.window->frameGeometry().height(),
                 qPrintable(QStringLiteral("%1 x %2")
                                .arg(editor.window->frameGeometry().width())
                                .arg(editor.window->frameGeometry().height())));
    }
};

QTEST_MAIN(ScreenSizeTest)
#include "ScreenSizeTest.moc"
