#include "mainwindow/EditorProgram.h"

#include "display/forms/DisplayPreview.h"
#include "display/forms/PreviewBar.h"
#include "link/TransferControls.h"
#include "mainwindow/MessageListPage.h"
#include "mainwindow/OpenNotes.h"
#include "mainwindow/TcpTesterPage.h"
#include "model/SystemPath.h"
#include "model/Text.h"
#include "widgets/CommandLine.h"
#include "widgets/FileChoice.h"
#include "widgets/PathText.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

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

/// The number of columns that a text names; nothing where the preview has no such panel.
std::optional<int> columnsOf(const QString& text) {
    if (!GenenalModule::IsAllDigits(text.toStdString()) || text.size() > 4)
        return std::nullopt;
    const int columns = text.toInt();
    if (columns < PreviewBar::minimumColumns || columns > PreviewBar::maximumColumns)
        return std::nullopt;
    return columns;
}

} // namespace

EditorProgram::EditorProgram(const std::string& programFolder, std::uint16_t modbusPort,
                             const QString& recoveryFolder)
    : environment_{programFolder, PathRules::native()},
      history_(environment_.paths, environment_.programFolder),
      chooser_(history_, environment_, project_, messages_),
      window_(project_, history_, environment_,
              {messages_,
               chooser_,
               helpOpener_,
               endProgram,
               PreviewClock::system(),
               {.folder = recoveryFolder},
               modbusPort}),
      testerClient_(project_, window_.testerPage(), messages_, modbusPort),
      transfer_(project_, window_.lifecycle(), chooser_, messages_, window_, &makeTransferControl) {
    window_.testerPage().useActions(testerClient_);
    testerClient_.giveWayTo(transfer_.running());
    window_.useTransfer(transfer_);
    transfer_.tellCauses([this](const QString& text) { window_.showNotice(text); });
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

EditorStart readCommandLine(int argumentCount, char** arguments) {
    QCoreApplication::setApplicationName(QStringLiteral("orvista-editor"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVISTA_RELEASE));
    QCommandLineParser commandLine;
    commandLine.setApplicationDescription(QStringLiteral("Prepares an Ulvo LX-400D message display."));
    commandLine.addHelpOption();
    commandLine.addVersionOption();
    commandLine.addPositionalArgument(QStringLiteral("project"), QStringLiteral("Project file to open"),
                                      QStringLiteral("[project.orx]"));
    const QCommandLineOption columns(QStringLiteral("columns"),
                                     QStringLiteral("Dots across the previewed display, 32 to 512 (128)."),
                                     QStringLiteral("N"), QString::number(PreviewBar::usualColumns));
    commandLine.addOption(columns);
    processBeforeStart(commandLine, argumentCount, arguments);
    const std::optional<int> previewColumns = columnsOf(commandLine.value(columns));
    if (!previewColumns) {
        std::fprintf(stderr, "orvista-editor: --columns takes a whole number from %d to %d\n",
                     PreviewBar::minimumColumns, PreviewBar::maximumColumns);
        std::exit(usageError);
    }
    const QStringList files = commandLine.positionalArguments();
    return {files.isEmpty() ? std::string() : absolutePath(pathFromShown(files.front())), *previewColumns};
}

int runEditor(const EditorStart& start) {
    keepNoDialogSettings();
    QGuiApplication::setDesktopFileName(QStringLiteral("orvista-editor"));
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    EditorProgram editor(programFolder(), ModbusClient::modbusPort, data + QStringLiteral("/recovery"));
    if (!start.project.empty())
        editor.window().openAtStart(start.project);
    editor.window().messagePage().preview().setColumns(start.previewColumns);
    editor.window().notes().useColumns(start.previewColumns);
    editor.window().show();
    return QApplication::exec();
}

} // namespace orvista
