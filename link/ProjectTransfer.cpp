#include "link/ProjectTransfer.h"

#include "model/DeviceFileReaders.h"
#include "model/DeviceFiles.h"
#include "model/Windows1252.h"

#include <utility>

namespace orvista::DocTsfModule {

namespace {

/// Passes on what a transfer shows, and keeps what the device does not have.
class HeardProgress final : public TransferProgress {
public:
    HeardProgress(TransferProgress& progress, std::vector<std::string>& missing)
        : progress_(progress), missing_(missing) {}
    void showActivity(const std::string& text) override { progress_.showActivity(text); }
    void showFile(const std::string& name, std::size_t number, std::size_t count) override {
        progress_.showFile(name, number, count);
    }
    void noteMissing(const std::vector<std::string>& names) override { missing_ = names; }
    bool isToEnd() const override { return progress_.isToEnd(); }

private:
    TransferProgress& progress_;
    std::vector<std::string>& missing_;
};

} // namespace

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

/// False where the device does not take the connection; the line says why.
/// \param control null where there is none
bool ProjectTransfer::connected(TransferControl* control, const DeviceConnection& connection) {
    if (control != nullptr && connect(*control, connection))
        return true;
    if (const std::string cause = control != nullptr ? control->cause() : std::string(); !cause.empty())
        dialogs_.showCause(connection.txtIP + ": " + cause);
    return false;
}

void ProjectTransfer::send(const DeviceConnection& connection) {
    dialogs_.showCause({});
    auto progress = dialogs_.showProgress("Upload");
    progress->showActivity("Connecting to " + connection.txtIP);
    const auto control = makeControl_(*progress);
    if (!connected(control.get(), connection)) {
        progress.reset();
        messages_.show(MessageIcon::Exclamation, "Connect Fail!");
        return;
    }
    const PathRules& paths = lifecycle_.environment().paths;
    const SentFiles sent = sendFolder(*control, project_.ProjPath, paths, *progress);
    progress.reset();
    if (!sent.cause.empty())
        dialogs_.showCause(faultOf(sent, paths));
    if (sent.failedPath)
        messages_.show(MessageIcon::Exclamation, "Unable to upload " + *sent.failedPath);
    else
        messages_.show(MessageIcon::Information, "All files were successfully uploaded");
}

FetchedDisplay ProjectTransfer::Download() {
    if (!lifecycle_.saveModifiedProject("Do you want to save current project before download?"))
        return {};
    const auto target = chooser_.chooseNewProject("Create new project for downloaded files");
    if (!target)
        return {};
    FetchedDisplay display;
    if (const auto connection = chooseConnection({}))
        running_.during([&] { display = fetch(*connection, "Download", target->ProjPath); });
    if (display.end != FetchedDisplay::End::Failed)
        openDownloadedProject(*target);
    return display;
}

std::optional<DeviceConnection> ProjectTransfer::chooseConnection(const std::string& caption) {
    return dialogs_.chooseConnection(utf8FromWindows1252(project_.IP), caption);
}

FetchedDisplay ProjectTransfer::Fetch(const std::string& title, const std::string& folder) {
    FetchedDisplay display;
    if (const auto connection = chooseConnection(title))
        running_.during([&] { display = fetch(*connection, title, folder); });
    return display;
}

FetchedDisplay ProjectTransfer::fetch(const DeviceConnection& connection, const std::string& title,
                                      const std::string& folder) {
    FetchedDisplay display{
        FetchedDisplay::End::Failed, connection.txtIP + ":" + connection.txtPort, {}, connection.txtIP};
    dialogs_.showCause({});
    auto window = dialogs_.showProgress(title);
    HeardProgress progress(*window, display.missing);
    progress.showActivity("Connecting to " + connection.txtIP);
    const auto control = makeControl_(progress);
    if (!connected(control.get(), connection)) {
        window.reset();
        messages_.show(MessageIcon::Exclamation, "Connect Fail!");
        return display;
    }
    progress.showActivity("Downloading files");
    if (transferSucceeded(control->DownloadFiles({}, folder))) {
        display.end = FetchedDisplay::End::Fetched;
    } else {
        window.reset();
        if (const std::string cause = control->cause(); !cause.empty())
            dialogs_.showCause(cause);
        messages_.show(MessageIcon::Exclamation, "Download Fail!");
    }
    control->CloseLink();
    return display;
}

void ProjectTransfer::openDownloadedProject(const ChosenProject& target) {
    lifecycle_.InitProject();
    FileRemarks remarks;
    ConfigModule::readDeviceFiles(target.ProjPath, project_, lifecycle_.fileContext(),
                                  modbusAdrFile.sectionName, &remarks);
    lifecycle_.adoptDownloadedProject(target, std::move(remarks));
}

} // namespace orvista::DocTsfModule
