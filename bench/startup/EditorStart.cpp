#include "bench/startup/EndAtFirstPaint.h"
#include "mainwindow/EditorProgram.h"

#include <QApplication>

/// The editor as its own main starts it, with the program folder of the first argument.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    orvista::EditorProgram editor(QApplication::arguments().at(1).toStdString());
    const orvista::bench::EndAtFirstPaint end(editor.window());
    editor.window().show();
    return QApplication::exec();
}
