#pragma once

#include "items/ProjectNotes.h"
#include "mainwindow/RecoveryFolder.h"
#include "model/Project.h"
#include "model/ProjectLifecycle.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <string>

class QWidget;

namespace orvista {

class ComparisonCommands;
class DisplayPreview;
class OpenNotes;
class PanelDock;
struct CutOffAcceptance;
struct EqualDisplay;

/// Tools > Accept at the Display…, and the way back from an acceptance that was cut off: what was there
/// before lies among the copies of unsaved work, and is offered for an hour.
class AcceptanceCommands final : public QObject {
    Q_OBJECT
public:
    /// All must outlive the commands.
    struct Surroundings {
        const DocMgrModule::ProjectLifecycle& lifecycle;
        ComparisonCommands& comparison;
        OpenNotes& notes;
        DisplayPreview& preview; ///< whose columns and clock count
        PanelDock& dock;
        QWidget& window;
    };
    struct Settings {
        QString copies;           ///< the folder for copies of unsaved work; empty: nothing is kept
        std::uint16_t modbusPort; ///< where the display speaks Modbus
        std::function<bool()> isTesterSending;
    };
    AcceptanceCommands(const Surroundings& surroundings, Settings settings);

    void miToolsAccept_Click();
    /// Offers the newest acceptance that was cut off within the last hour.
    void offerCutOff();

private:
    /// What the display was found to hold.
    struct Held {
        Project project;
        ProjectNotes notes;
        int columns = 0;
    };
    Held heldBy(const EqualDisplay& display) const;
    void accept(const EqualDisplay& display);
    void putBack(const QString& path);
    std::string claim(const std::string& address);
    bool isAcceptedElsewhere(const std::string& address) const;

    Surroundings around_;
    Settings settings_;
    RecoveryFolder copies_;
};

} // namespace orvista
