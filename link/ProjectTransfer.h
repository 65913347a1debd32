#pragma once

#include "link/RunningTransfer.h"
#include "link/TransferCommands.h"
#include "link/TransferSteps.h"
#include "model/ProjectLifecycle.h"

#include <memory>
#include <optional>
#include <string>

/// Upload of the project to the device and download into a new project.
namespace orvista::DocTsfModule {

class TransferDialogs {
public:
    virtual ~TransferDialogs() = default;
    /// \param deviceAddress the project's, UTF-8
    /// \param caption what the connection is for; empty for the dialog's own
    /// \returns nothing when the user cancelled
    virtual std::optional<DeviceConnection> chooseConnection(const std::string& deviceAddress,
                                                             const std::string& caption) = 0;
    virtual std::unique_ptr<TransferProgress> showProgress(const std::string& title) = 0;
    /// Says in a line why a transfer failed or what the device did not confirm, beside the box that tells of
    /// its end.
    /// \param text UTF-8; empty when a transfer begins, of which nothing is to be said yet
    virtual void showCause(const std::string& text) = 0;
};

class ProjectTransfer final {
public:
    ProjectTransfer(Project& project, DocMgrModule::ProjectLifecycle& lifecycle, ProjectChooser& chooser,
                    TransferDialogs& dialogs, Messages& messages, TransferControlMaker makeControl);

    /// From the connecting to the end of the last message.
    RunningTransfer& running() { return running_; }

    /// Saves a modified project without asking, then sends the device files and every bitmap of its folder.
    /// \throws Overflow for a port beyond 32767; nothing was sent then
    void Upload();

    /// Fetches the device's files into the folder of a new project and opens that, unsaved. Without a
    /// connection (its dialog cancelled) the folder is opened as it is.
    /// \throws Overflow for a port beyond 32767; the open project is untouched then
    /// \returns the connection dialog cancelled as cancelled
    FetchedDisplay Download();

    /// As TransferCommands::fetch tells.
    /// \throws Overflow for a port beyond 32767
    FetchedDisplay Fetch(const std::string& title, const std::string& folder);

private:
    void send(const DeviceConnection& connection);
    FetchedDisplay fetch(const DeviceConnection& connection, const std::string& title,
                         const std::string& folder);
    bool connected(TransferControl* control, const DeviceConnection& connection);
    void openDownloadedProject(const ChosenProject& target);
    std::optional<DeviceConnection> chooseConnection(const std::string& caption);

    Project& project_;
    DocMgrModule::ProjectLifecycle& lifecycle_;
    ProjectChooser& chooser_;
    TransferDialogs& dialogs_;
    Messages& messages_;
    TransferControlMaker makeControl_;
    RunningTransfer running_;
};

} // namespace orvista::DocTsfModule
