#include "link/forms/DeviceTransfer.h"

#include "link/forms/TransferProgressWindow.h"
#include "link/forms/frmConnection.h"

#include <QLineEdit>

#include <utility>

namespace orvista {

DeviceTransfer::DeviceTransfer(Project& project, DocMgrModule::ProjectLifecycle& lifecycle,
                               ProjectChooser& chooser, Messages& messages, QWidget& window,
                               DocTsfModule::TransferControlMaker makeControl)
    : window_(window), transfer_(project, lifecycle, chooser, *this, messages, std::move(makeControl)) {}

std::optional<DocTsfModule::DeviceConnection>
DeviceTransfer::chooseConnection(const std::string& deviceAddress, const std::string& caption) {
    frmConnection dialog(QString::fromStdString(deviceAddress), &window_);
    if (!caption.empty())
        dialog.setWindowTitle(QString::fromStdString(caption));
    dialog.exec();
    if (dialog.IsCanceled)
        return std::nullopt;
    return DocTsfModule::DeviceConnection{dialog.txtIP->text().toStdString(),
                                          dialog.txtPort->text().toStdString()};
}

std::unique_ptr<DocTsfModule::TransferProgress> DeviceTransfer::showProgress(const std::string& title) {
    return std::make_unique<TransferProgressWindow>(QString::fromStdString(title), &window_);
}

void DeviceTransfer::showCause(const std::string& text) {
    // The line may say something else by now.
    if (tellCause_ && (isCauseTold_ || !text.empty()))
        tellCause_(QString::fromStdString(text));
    isCauseTold_ = !text.empty();
}

} // namespace orvista
