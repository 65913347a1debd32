#include "console/Displays.h"

#include "console/CommandFailure.h"
#include "console/FirstError.h"
#include "console/Interruption.h"
#include "console/Output.h"
#include "link/DisplayFiles.h"
#include "link/TransferControls.h"
#include "model/DeviceFiles.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "model/Text.h"

#include <CLI/App.hpp>

#include <system_error>

namespace orvista::console {

namespace {

/// Shows a transfer where the command shows how far it is, and ends it when the user wants that: what was
/// fetched then goes, too.
class ShownTransfer final : public DocTsfModule::TransferProgress {
public:
    explicit ShownTransfer(const std::string& display) : display_(display) {}
    void showActivity(const std::string& text) override {
        endIfWanted();
        progress_.show(text);
    }
    void showFile(const std::string& name, std::size_t number, std::size_t count) override {
        endIfWanted();
        progress_.show(display_ + ": " + name + ", " + decimalText(number) + " of " + decimalText(count));
    }

    bool isToEnd() const override { return interruption_.came(); }
    /// \throws CommandFailure
    void endIfWanted() const {
        if (isToEnd())
            throw CommandFailure(ExitStatus::Unusable, display_ + ": interrupted");
    }

private:
    const std::string& display_;
    Progress progress_;
    Interruption interruption_{WatchInput::No};
};

DisplayAddress addressOf(const std::string& argument, DisplayService service) {
    try {
        return displayAddress(argument, service);
    } catch (const BadDisplayAddress& failure) {
        throw CommandFailure(ExitStatus::Unusable, failure.what());
    }
}

} // namespace

DisplayAddress transferAddress(const std::string& argument) {
    return addressOf(argument, fileTransfer);
}

DisplayAddress modbusAddress(const std::string& argument) {
    return addressOf(argument, modbusTcp);
}

CLI::Option* addModbusDisplay(CLI::App& command, std::string& display) {
    return command
        .add_option("DISPLAY", display,
                    "The display: NAME, NAME:PORT or [IPv6]:PORT; port " + decimalText(modbusTcp.port))
        ->check(CLI::Validator(
            [](const std::string& text) {
                const bool isProject = endsWithIgnoringCase(text, DocMgrModule::projectExtension);
                return isProject ? text + " is a project; the display comes first" : std::string();
            },
            {}));
}

CLI::Option* addProjectOnDisplay(CLI::App& command, std::string& project, const std::string& description) {
    return command.add_option("--project", project, description)->type_name("PROJECT");
}

ScratchFolder scratchFolder() {
    try {
        return ScratchFolder();
    } catch (const std::system_error& failure) {
        throw CommandFailure(ExitStatus::Unusable, failure.what());
    }
}

void fetchDisplay(const DisplayAddress& display, const std::string& folder) {
    const std::string name = display.text();
    ShownTransfer progress(name);
    try {
        fetchDisplayFiles(display, folder, progress, makeTransferControl);
        progress.endIfWanted();
    } catch (const FetchFailure& failure) {
        progress.endIfWanted();
        throw CommandFailure(ExitStatus::Unusable, name + ": " + failure.what());
    }
}

Project readFetchedProject(const std::string& folder, const std::string& display, FileRemarks* remarks) {
    const PathRules paths = PathRules::native();
    FirstError error;
    Project project;
    project.ProjPath = folder;
    ConfigModule::readDeviceFiles(folder, project, {paths, error}, modbusAdrFile.name, remarks);
    if (error.any())
        throw CommandFailure(ExitStatus::Unusable, display + ": " + error.text());
    return project;
}

} // namespace orvista::console
