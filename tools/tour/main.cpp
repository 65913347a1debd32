#include "tests/support/ExpectedLocale.h"
#include "tools/tour/DeviceTour.h"
#include "tools/tour/EditingTour.h"
#include "tools/tour/FilesTour.h"
#include "tools/tour/ProjectTour.h"
#include "tools/tour/RecoveryTour.h"
#include "tools/tour/TablesTour.h"

#include <QApplication>
#include <QPalette>
#include <QTest>

#include <cstdio>

/// orvista-tour FOLDER BITMAP [--dark]: plays the tour and leaves its pictures and projects in FOLDER. BITMAP
/// is the one that a message shows.
int main(int argc, char** argv) {
    using namespace orvista::tour;
    // The hands reach Qt's own file dialogs, not those of Windows.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    QStringList arguments = QApplication::arguments();
    if (arguments.removeAll(QStringLiteral("--dark")) > 0)
        QApplication::setPalette(QPalette(QColor(45, 45, 45)));
    if (arguments.size() != 3) {
        std::fputs("usage: orvista-tour FOLDER BITMAP [--dark]\n", stderr);
        return 2;
    }
    if (!orvista::testing::isExpectedLocaleInForce()) {
        std::fputs("the locale this tour is for is not in force\n", stderr);
        return EXIT_FAILURE;
    }
    Stage stage(arguments.at(1));
    ProjectTour project(stage);
    EditingTour editing(stage, arguments.at(2));
    TablesTour tables(stage);
    DeviceTour device(stage);
    RecoveryTour recovery(stage);
    FilesTour files(stage);
    // A box that nobody answers would hold a step for five minutes, and the debugger that then prints every
    // thread for minutes more.
    qputenv("QTEST_FUNCTION_TIMEOUT", "60000");
    qputenv("QTEST_DISABLE_STACK_DUMP", "1");
    const QStringList quietly{arguments.first(), QStringLiteral("-silent")};
    for (QObject* const part :
         std::initializer_list<QObject*>{&project, &editing, &tables, &device, &recovery, &files})
        if (QTest::qExec(part, quietly) != 0)
            return EXIT_FAILURE;
    return EXIT_SUCCESS;
}
