#pragma once

#include "dialogs/DialogMessages.h"
#include "dialogs/DialogProjectChooser.h"
#include "link/forms/DeviceTransfer.h"
#include "link/forms/TesterClient.h"
#include "mainwindow/HelpOpener.h"
#include "mainwindow/frmMain.h"
#include "model/History.h"
#include "model/Project.h"

#include <string>

namespace orvista {

/// The editor put together: the one project, the real dialogs and the main window.
class EditorProgram {
public:
    /// \param programFolder UTF-8, without a trailing separator: where the history and the help file lie
    /// \param modbusPort where the device takes test requests and is read
    /// \param recoveryFolder where copies of unsaved work are kept; empty for none
    explicit EditorProgram(const std::string& programFolder,
                           std::uint16_t modbusPort = ModbusClient::modbusPort,
                           const QString& recoveryFolder = {});

    frmMain& window() { return window_; }

private:
    DocMgrModule::ProgramEnvironment environment_;
    Project project_;
    ConfigModule::History history_;
    DialogMessages messages_;
    DialogProjectChooser chooser_;
    SystemHelpOpener helpOpener_;
    frmMain window_;
    TesterClient testerClient_;
    DeviceTransfer transfer_;
};

/// The folder of the running executable itself, links to it resolved; UTF-8. Needs a QApplication.
std::string programFolder();

/// What the command line asks for.
struct EditorStart {
    std::string project; ///< absolute path, UTF-8 where the path is text; empty for none
    int previewColumns;
};

/// Call it before there is an application: help, the version and mistakes are answered without a display,
/// and end the program.
EditorStart readCommandLine(int argumentCount, char** arguments);

/// Runs the editor. Needs a QApplication. Returns the exit code.
int runEditor(const EditorStart& start);

} // namespace orvista
