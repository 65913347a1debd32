#include "mainwindow/FleetCommands.h"

#include "items/Master.h"
#include "link/forms/frmSeveralDisplays.h"
#include "mainwindow/OpenMaster.h"
#include "mainwindow/OpenNotes.h"
#include "mainwindow/ProgramBeside.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <system_error>

namespace orvista {

FleetCommands::FleetCommands(DocMgrModule::ProjectLifecycle& lifecycle, OpenNotes& notes, OpenMaster& master,
                             QWidget& window)
    : QObject(&window), lifecycle_(lifecycle), notes_(notes), master_(master), window_(window) {}

void FleetCommands::miToolsSeveral_Click() {
    const Project& project = lifecycle_.project();
    if (project.modified && lifecycle_.SaveCommand() != DocMgrModule::SaveOutcome::Saved)
        return;
    const DocMgrModule::ProgramEnvironment& environment = lifecycle_.environment();
    Messages& messages = lifecycle_.fileContext().messages;
    std::string program = programBeside(environment, "orvista");
    std::error_code unknown;
    if (!std::filesystem::exists(systemPath(program), unknown))
        return messages.show(MessageIcon::Exclamation, program + " is missing");
    notes_.readAgain(); // both may be of a moment ago
    master_.look();
    const std::string projectFile =
        DocMgrModule::projectFilePath(environment.paths, project.ProjPath, project.ProjName);
    if (const std::string fault = hiddenMasterFault(projectFile, project, notes_.mayHideMaster());
        !fault.empty())
        return messages.show(MessageIcon::Exclamation, fault);
    frmSeveralDisplays dialog({project, projectFile, std::move(program), messages, master_.view().isMaster(),
                               master_.view().displays(), notes_.notes().columns},
                              &window_);
    dialog.exec();
}

} // namespace orvista
