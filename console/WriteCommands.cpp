#include "console/Commands.h"

#include "console/Displays.h"
#include "console/NotesBeside.h"
#include "console/Projects.h"
#include "link/DisplayWrites.h"
#include "model/Item.h"

#include <CLI/App.hpp>

#include <memory>
#include <optional>
#include <utility>

/// Switching messages and writing values.
namespace orvista::console {

namespace {

struct SwitchOptions {
    std::string display;
    std::string project;
    std::vector<std::string> on;
    std::vector<std::string> off;
    bool only = false;
    bool notWhole = false;
};

struct WriteOptions {
    std::string display;
    std::string project;
    std::vector<std::string> assignments;
    bool notWhole = false;
};

/// Sends what `writes` gives, unless that says that it cannot be.
template <typename Writes>
ExitStatus send(const DisplayAddress& display, Writes writes) {
    try {
        writeToDisplay(display, writes());
        return ExitStatus::Well;
    } catch (const BadWrite& failure) {
        throw CommandFailure(ExitStatus::Unusable, failure.what());
    } catch (const DisplayFailure& failure) {
        throw CommandFailure(ExitStatus::Found, display.text() + ": " + failure.what());
    }
}

/// "--on" takes whatever follows it: a last word that is no message is the display.
void takeDisplayFromMessages(SwitchOptions& options) {
    for (auto* const messages : {&options.on, &options.off}) {
        if (options.display.empty() && !messages->empty() && !messageNamed(messages->back())) {
            options.display = std::move(messages->back());
            messages->pop_back();
        }
    }
}

ExitStatus switchMessages(SwitchOptions options) {
    const ProjectNotes notes = notesBeside(options.project);
    options.on = withoutLabels(std::move(options.on), notes);
    options.off = withoutLabels(std::move(options.off), notes);
    takeDisplayFromMessages(options);
    if (options.display.empty())
        throw CommandFailure(ExitStatus::Unusable, "DISPLAY is required; see orvista switch --help");
    if (!options.only && options.on.empty() && options.off.empty())
        throw CommandFailure(ExitStatus::Unusable, "nothing to switch: name messages after --on or --off");
    const DisplayAddress display = modbusAddress(options.display);
    const Project project = readWholeProject(options.project, options.notWhole);
    return send(display, [&] {
        std::vector<DisplayWrite> writes = switchWrites(project, options.on, options.off);
        return options.only ? onlyWrites(project, options.on) : writes;
    });
}

ExitStatus writeValues(const WriteOptions& options) {
    const DisplayAddress display = modbusAddress(options.display);
    std::optional<Project> project;
    if (!options.project.empty())
        project = readWholeProject(options.project, options.notWhole);
    const auto assignments =
        withoutAssignedLabels(options.assignments, project ? notesBeside(options.project) : ProjectNotes());
    return send(display, [&] { return assignedWrites(assignments, project ? &*project : nullptr); });
}

CLI::Option* addMessageList(CLI::App& command, const char* name, std::vector<std::string>& messages,
                            const char* description) {
    return command.add_option(name, messages, description)->type_name("MESSAGE")->delimiter(',');
}

} // namespace

void addSwitch(CLI::App& program, Run& run) {
    const auto options = std::make_shared<SwitchOptions>();
    CLI::App* command = program.add_subcommand("switch", "Switch messages of a display on and off");
    addModbusDisplay(*command, options->display);
    addProjectOnDisplay(*command, options->project)->required();
    addMessageList(*command, "--on", options->on, "Messages to switch on, blanks or commas between");
    addMessageList(*command, "--off", options->off, "Messages to switch off, the same");
    command->add_flag("--only", options->only, "Switch all others off");
    addNotWhole(*command, options->notWhole);
    command->footer(
        "Examples:\n"
        "  orvista switch 192.168.1.103 --project PUMPSTATION.orx --on STDMSG3,ALTMSG1\n"
        "  orvista switch 192.168.1.103 --project PUMPSTATION.orx --on STDMSG4 --off STDMSG3\n"
        "  orvista switch 192.168.1.103 --project PUMPSTATION.orx --only --on STDMSG3\n\n"
        "What is to be off is switched off first. Other messages stay as they are, except with --only, "
        "which\n"
        "writes all 60; alone it switches every message off. Ends with status 1 when the display does not\n"
        "confirm.");
    command->callback([options, &run] { run = [options] { return switchMessages(*options); }; });
}

void addWrite(CLI::App& program, Run& run) {
    const auto options = std::make_shared<WriteOptions>();
    CLI::App* command = program.add_subcommand("write", "Write variables of a display");
    addModbusDisplay(*command, options->display)->required();
    command
        ->add_option("VALUE", options->assignments,
                     "RegVar3=12.5, CoilVar2=on, 200=1.5 (a float from register 200 on) or 200=on (a coil)")
        ->required();
    addProjectOnDisplay(*command, options->project, "The project that is on the display, .orx; for names");
    addNotWhole(*command, options->notWhole);
    command->footer("Examples:\n"
                    "  orvista write 192.168.1.103 --project PUMPSTATION.orx RegVar3=12.5 CoilVar2=on\n"
                    "  orvista write 192.168.1.103 200=1.5\n\n"
                    "Addresses count from 0; 0xC8 is 200, too, and 40101 is refused, because it reads like "
                    "the reference\n"
                    "of register 100. Values are written in the order given. Ends with status 1 when the "
                    "display does not confirm.");
    command->callback([options, &run] { run = [options] { return writeValues(*options); }; });
}

} // namespace orvista::console
