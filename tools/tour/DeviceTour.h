#pragma once

#include "tests/support/SimulatorProcess.h"
#include "tools/tour/Stage.h"

#include <QObject>

#include <memory>

namespace orvista::tour {

/// The project meets a device: uploaded, switched on, fed with values, downloaded into a new project.
class DeviceTour final : public QObject {
    Q_OBJECT
public:
    explicit DeviceTour(Stage& stage) : stage_(stage) {}

private slots:
    void startsADevice();
    void uploadsTheProject();
    void switchesARegularMessageOn();
    void writesACoilAndAFloat();
    void overridesItByAnEmergencyMessage();
    void watchesTheDisplay();
    void verifiesTheUpload();
    void acceptsAtTheDisplay();
    void comparesWithTheDevice();
    void downloadsIntoANewProject();
    void takesTheAddressItCameFrom();
    void showsTheDownloadedMessage();
    void sendsToSeveralDisplays();
    void tellsHowOldAReadingIs();
    void triesWithoutADisplay();

private:
    /// Fills in the connection dialog that the next command opens.
    void connectToDevice(const QString& picture, const QString& line);
    /// Waits until the device has logged that request (hexadecimal) and drawn what it then shows.
    void showPanelAfter(const QString& request, const QString& name, const QString& line);
    QString panelFile() const { return stage_.path(QStringLiteral("panel.png")); }

    Stage& stage_;
    int transferPort_ = 0;
    std::unique_ptr<testing::SimulatorProcess> device_;
};

} // namespace orvista::tour
