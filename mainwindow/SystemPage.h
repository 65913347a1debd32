#pragma once

#include "model/People.h"
#include "model/Project.h"

#include <QWidget>

class QGroupBox;
class QRadioButton;

namespace orvista {

class DeviceLineEdit;
class ShownBox;
class TcpTesterPage;

/// Shows the project's name and edits the device's address.
class SystemPage final : public QWidget {
    Q_OBJECT
public:
    SystemPage(Project& project, ModifiedMark& modifiedMark, TcpTesterPage& testerPage,
               QWidget* parent = nullptr);

    /// Name, address and communication type from the model. Marks the project modified, as every write of
    /// the address box does.
    void refresh();
    void showProjectName(const std::string& name);
    /// Types the device's address.
    void typeAddress(const QString& address);

private:
    QGroupBox* buildCommunicationFrame();
    QGroupBox* buildDeviceFrame();

    void optEthernet_Click();
    void txtSystemIP_Change();

    Project& project_;
    ModifiedMark& modifiedMark_;
    TcpTesterPage& testerPage_;

    ShownBox* txtSystemName;
    QRadioButton* optEthernet;
    DeviceLineEdit* txtSystemIP;
};

} // namespace orvista
