#include "mainwindow/EditorProgram.h"

#include "link/TransferControls.h"
#include "mainwindow/TcpTesterPage.h"
#include "model/Files.h"
#include "widgets/CommandLine.h"
#include "widgets/PathText.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

#include <filesystem>

namespace orvista {

namespace {

/// Leaves the event loop. QApplication::quit would ask the window first, which may refuse.
void endProgram() {
    for (QWidget* const window : QApplication::topLevelWidgets())
        window->hide();
    QCoreApplication::exit();
}

/// In the platform's notation.
std::string absolutePath(const std::string& path) {
    std::error_code error;
    return utf8Path(std::filesystem::absolute(systemPath(path), error).lexically_normal().make_preferred());
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
#ifdef Q_OS_LINUX
    // Qt would give the path as text, which it need not be.
    std::error_code error;
    const std::filesystem::path program = std::filesystem::canonical("/proc/self/exe", error);
    if (!error)
        return utf8Path(program.parent_path());
#endif
    const QFileInfo executable(QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
    return QDir::toNativeSeparators(executable.absolutePath()).toStdString();
}

std::string projectOnCommandLine(int argumentCount, char** arguments) {
    QCoreApplication::setApplicationName(QStringLiteral("orvista-editor"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVISTA_VERSION));
    QCommandLineParser commandLine;
    commandLine.setApplicationDescription(QStringLiteral("Prepares an Ulvo LX-400D message display."));
    commandLine.addHelpOption();
    commandLine.addVersionOption();
    commandLine.addPositionalArgument(QStringLiteral("project"), QStringLiteral("Project file to open"),
                                      QStringLiteral("[project.orx]"));
    processBeforeStart(commandLine, argumentCount, arguments);
    const QStringList files = commandLine.positionalArguments();
    return files.isEmpty() ? std::string() : absolutePath(pathFromShown(files.front()));
}

int runEditor(const std::string& project) {
    QGuiApplication::setDesktopFileName(QStringLiteral("orvista-editor"));
    EditorProgram editor(programFolder());
    if (!project.empty())
        editor.window().openAtStart(project);
    editor.window().show();
    return QApplication::exec();
}

} // namespace orvista
