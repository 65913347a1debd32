#include "mainwindow/EditorProgram.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    const std::string project = orvista::projectOnCommandLine(argc, argv);
    const QApplication application(argc, argv);
    return orvista::runEditor(project);
}
