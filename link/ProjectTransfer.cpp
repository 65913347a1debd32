#include "link/ProjectTransfer.h"

#include "model/DeviceFileReaders.h"
#include "model/DeviceFiles.h"
#include "model/Windows1252.h"

#include <utility>

namespace orvista::DocTsfModule {

ProjectTransfer::ProjectTransfer(Project& project, DocMgrModule::ProjectLifecycle& lifecycle,
                                 ProjectChooser& chooser, TransferDialogs& dialogs, Messages& messages,
                                 TransferControlMaker makeControl)
    : project_(project),
      lifecycle_(lifecycle),
      chooser_(chooser),
      dialogs_(dialogs),
      messages_(messages),
      makeControl_(std::move(makeControl)) {}

void ProjectTransfer::Upload() {
    // Sending what could not be saved would leave the device with another project than the folder.
    if (project_.modified && lifecycle_.SaveCommand() != DocMgrModule::SaveOutcome::Saved)
        return;
    if (const auto connection = chooseConnection({}))
        running_.during([&] { send(*connection); });
}

void ProjectTransfer::send(const DeviceConnection& connection) {
    auto progress = dialogs_.showProgress("Upload");
    progress->showActivity("Connecting to " + connection.txtIP);
    const auto control = makeControl_(*progress);
    if (!control || !connect(*control, connection)) {
        progress.reset();
        messages_.show(MessageIcon::Exclamation, "Connect Fail!");
        return;
    }
    const auto failed =
        sendFolder(*control, project_.ProjPath, lifecycle_.environment().paths, *progress).failedPath;
    progress.reset();
    if (failed)
        messages_.show(MessageIcon::Exclamation, "Unable to upload " + *failed);
    else
        messages_.show(MessageIcon::Information, "All files were successfully uploaded");
}

void ProjectTransfer::Download() {
    if (!lifecycle_.saveModifiedProject("Do you want to save current project before download?"))
        return;
    const auto target = chooser_.chooseNewProject("Create new project for downloaded files");
    if (!target)
        return;
    bool goesAhead = true;
    if (const auto connection = chooseConnection({}))
        running_.during([&] { goesAhead = fetch(*connection, "Download", target->ProjPath); });
    if (goesAhead)
        openDownloadedProject(*target);
}

std::optional<DeviceConnection> ProjectTransfer::chooseConnection(const std::string& caption) {
    return dialogs_.chooseConnection(utf8FromWindows1252(project_.IP), caption);
}

std::optional<std::string> ProjectTransfer::Fetch(const std::string& title, const std::string& folder) {
    const auto connection = chooseConnection(title);
    bool fetched = false;
    if (connection)
        running_.during([&] { fetched = fetch(*connection, title, folder); });
    return fetched ? std::optional(connection->txtIP + ":" + connection->txtPort) : std::nullopt;
}

bool ProjectTransfer::fetch(const DeviceConnection& connection, const std::string& title,
                            const std::string& folder) {
    auto progress = dialogs_.showProgress(title);
    progress->showActivity("Connecting to " + connection.txtIP);
    const auto control = makeControl_(*progress);
    if (!control || !connect(*control, connection)) {
        progress.reset();
        messages_.show(MessageIcon::Exclamation, "Connect Fail!");
        return false;
    }
    progress->showActivity("Downloading files");
    const bool fetched = transferSucceeded(control->DownloadFiles({}, folder));
    if (!fetched) {
        progress.reset();
        messages_.show(MessageIcon::Exclamation, "Download Fail!");
    }
    control->CloseLink();
    return fetched;
}

void ProjectTransfer::openDownloadedProject(const ChosenProject& target) {
    lifecycle_.InitProject();
    FileRemarks remarks;
    ConfigModule::readDeviceFiles(target.ProjPath, project_, lifecycle_.fileContext(),
                                  modbusAdrFile.sectionName, &remarks);
    lifecycle_.adoptDownloadedProject(target, std::move(remarks));
}

} // namespace orvista::DocTsfModule
