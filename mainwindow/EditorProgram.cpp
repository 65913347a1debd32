#include "mainwindow/EditorProgram.h"

#include "link/TransferControls.h"
#include "mainwindow/TcpTesterPage.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

namespace orvista {

namespace {

/// Leaves the event loop. QApplication::quit would ask the window first, which may refuse.
void endProgram() {
    for (QWidget* const window : QApplication::topLevelWidgets())
        window->hide();
    QCoreApplication::exit();
}

} // namespace

EditorProgram::EditorProgram(const std::string& programFolder, std::uint16_t modbusPort)
    : environment_{programFolder, PathRules::native()},
      history_(environment_.paths, environment_.programFolder),
      chooser_(history_, environment_, project_, messages_),
      window_(project_, history_, environment_, {messages_, chooser_, helpOpener_, endProgram}),
      testerClient_(project_, window_.testerPage(), messages_, modbusPort),
      transfer_(project_, window_.lifecycle(), chooser_, messages_, window_, &makeTransferControl) {
    window_.testerPage().useActions(testerClient_);
    testerClient_.giveWayTo(transfer_.running());
    window_.useTransfer(transfer_);
    messages_.useParent(&window_);
    chooser_.useParent(&window_);
}

std::string programFolder() {
    const QFileInfo executable(QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
    return QDir::toNativeSeparators(executable.absolutePath()).toStdString();
}

int runEditor(const QApplication& application) {
    QCoreApplication::setApplicationName(QStringLiteral("orvista-editor"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVISTA_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("orvista-editor"));
    QCommandLineParser commandLine;
    commandLine.setApplicationDescription(QStringLiteral("Prepares an Ulvo LX-400D message display."));
    commandLine.addHelpOption();
    commandLine.addVersionOption();
    commandLine.addPositionalArgument(QStringLiteral("project"), QStringLiteral("Project file to open"),
                                      QStringLiteral("[project.orx]"));
    commandLine.process(application);

    EditorProgram editor(programFolder());
    if (const QStringList files = commandLine.positionalArguments(); !files.isEmpty()) {
        const QString path = QFileInfo(files.front()).absoluteFilePath();
        editor.window().openAtStart(QDir::toNativeSeparators(path).toStdString());
    }
    editor.window().show();
    return QApplication::exec();
}

} // namespace orvista
