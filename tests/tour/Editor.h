#pragma once

#include "dialogs/DialogMessages.h"
#include "dialogs/DialogProjectChooser.h"
#include "mainwindow/HelpOpener.h"
#include "mainwindow/frmMain.h"

#include <string>

namespace orvista::tour {

/// The editor as the program puts it together, with a program folder of its own.
struct Editor {
    explicit Editor(const std::string& programFolder)
        : environment{programFolder, PathRules::native()},
          history(environment.paths, environment.programFolder),
          messages(nullptr),
          chooser(history, environment, project, messages, nullptr),
          window(project, history, environment, {messages, chooser, help, [this] { ended = true; }}) {}

    bool ended = false;
    DocMgrModule::ProgramEnvironment environment;
    Project project;
    ConfigModule::History history;
    DialogMessages messages;
    DialogProjectChooser chooser;
    SystemHelpOpener help;
    frmMain window;
};

} // namespace orvista::tour
