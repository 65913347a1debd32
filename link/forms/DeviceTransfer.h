#pragma once

#include "link/ProjectTransfer.h"
#include "link/TransferCommands.h"

#include <QString>

#include <functional>
#include <utility>

class QWidget;

namespace orvista {

/// Upload and Download of the main window, with their dialogs.
class DeviceTransfer final : public TransferCommands, private DocTsfModule::TransferDialogs {
public:
    /// \param window what the dialogs belong to
    DeviceTransfer(Project& project, DocMgrModule::ProjectLifecycle& lifecycle, ProjectChooser& chooser,
                   Messages& messages, QWidget& window, DocTsfModule::TransferControlMaker makeControl);

    /// Says in a line why a transfer failed; an empty text takes that line away.
    void tellCauses(std::function<void(const QString&)> tell) { tellCause_ = std::move(tell); }
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
    void showCause(const std::string& text) override;

    QWidget& window_;
    std::function<void(const QString&)> tellCause_;
    bool isCauseTold_ = false;
    DocTsfModule::ProjectTransfer transfer_;
};

} // namespace orvista
