#include "mainwindow/EditorProgram.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    return orvista::runEditor(application);
}
