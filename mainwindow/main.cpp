#include "mainwindow/EditorProgram.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    const orvista::EditorStart start = orvista::readCommandLine(argc, argv);
    const QApplication application(argc, argv);
    return orvista::runEditor(start);
}
