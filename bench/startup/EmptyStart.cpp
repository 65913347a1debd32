#include "bench/startup/EndAtFirstPaint.h"

#include <QApplication>
#include <QMainWindow>

/// The least that a program with a main window can be, of the editor's size.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1000, 700);
    const orvista::bench::EndAtFirstPaint end(window);
    window.show();
    return QApplication::exec();
}
