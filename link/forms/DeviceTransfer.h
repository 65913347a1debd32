#pragma once

#include "link/ProjectTransfer.h"
#include "link/TransferCommands.h"

class QWidget;

namespace orvista {

/// Upload and Download of the main window, with their dialogs.
class DeviceTransfer final : public TransferCommands, private DocTsfModule::TransferDialogs {
public:
    /// \param window what the dialogs belong to
    DeviceTransfer(Project& project, DocMgrModule::ProjectLifecycle& lifecycle, ProjectChooser& chooser,
                   Messages& messages, QWidget& window, DocTsfModule::TransferControlMaker makeControl);

    RunningTransfer& running() { return transfer_.running(); }
    void upload() override { transfer_.Upload(); }
    FetchedDisplay download() override { return transfer_.Download(); }
    FetchedDisplay fetch(const std::string& title, const std::string& folder) override {
        return transfer_.Fetch(title, folder);
    }

private:
    std::optional<DocTsfModule::DeviceConnection> chooseConnection(const std::string& deviceAddress,
                                                                   const std::string& caption) override;
    std::unique_ptr<DocTsfModule::TransferProgress> showProgress(const std::string& title) override;

    QWidget& window_;
    DocTsfModule::ProjectTransfer transfer_;
};

} // namespace orvista
