#include "tests/tour/DeviceTour.h"
#include "tests/tour/EditingTour.h"
#include "tests/tour/ProjectTour.h"

#include <QApplication>
#include <QTest>

#include <cstdio>

/// orvista-tour FOLDER BITMAP: plays the tour and leaves its pictures and projects in FOLDER. BITMAP is the
/// one that a message shows.
int main(int argc, char** argv) {
    using namespace orvista::tour;
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: orvista-tour FOLDER BITMAP\n", stderr);
        return 2;
    }
    Stage stage(arguments.at(1));
    ProjectTour project(stage);
    EditingTour editing(stage, arguments.at(2));
    DeviceTour device(stage);
    const QStringList quietly{arguments.first(), QStringLiteral("-silent")};
    for (QObject* const part : std::initializer_list<QObject*>{&project, &editing, &device})
        if (QTest::qExec(part, quietly) != 0)
            return EXIT_FAILURE;
    return EXIT_SUCCESS;
}
