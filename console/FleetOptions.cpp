#include "console/FleetOptions.h"

#include "console/CommandFailure.h"
#include "console/Displays.h"
#include "console/OptionChecks.h"
#include "console/Output.h"
#include "console/Sheets.h"
#include "model/ProjectFile.h"
#include "model/Text.h"
#include "sheets/FleetSheet.h"

#include <CLI/App.hpp>

#include <map>

namespace orvista::console {

namespace {

constexpr std::size_t mostJobs = 60;

std::vector<FleetDisplay> listedDisplays(const FleetOptions& options, FleetDefaults defaults) {
    if (options.untilInputEnds && options.list == standardInput)
        throw CommandFailure(ExitStatus::Unusable,
                             "--until-input-ends leaves no standard input for the list");
    defaults.folder = folderOfSheet(options.list);
    SheetErrors errors;
    auto displays = readFleetSheet(sheetBytes(options.list), defaults, errors);
    if (!errors.none()) {
        reportErrors(options.list, errors);
        throw CommandFailure(ExitStatus::Unusable, sheetName(options.list) + ": nothing was begun");
    }
    return displays;
}

std::vector<FleetDisplay> namedDisplays(const FleetOptions& options, const FleetDefaults& defaults) {
    std::vector<FleetDisplay> displays;
    std::map<std::string, std::string> texts;
    for (const std::string& text : options.displays) {
        if (endsWithIgnoringCase(text, DocMgrModule::projectExtension))
            throw CommandFailure(ExitStatus::Unusable, text + " is a project, not a display");
        displays.push_back({text, transferAddress(text), defaults.project});
        const auto [there, isNew] = texts.emplace(lowerAscii(displays.back().address.text()), text);
        if (!isNew)
            throw CommandFailure(ExitStatus::Unusable,
                                 there->second + " and " + text + " are the same display");
    }
    return displays;
}

} // namespace

void addFleetOptions(CLI::App& command, FleetOptions& options) {
    command
        .add_option(
            "--list", options.list,
            "A table of displays with the columns name, address, port, project; \"-\" is standard input")
        ->type_name("FILE.csv");
    command.add_option("--jobs", options.jobs, "How many displays to work on at once, 1 to 60")
        ->type_name("N")
        ->check(wholeNumbers(1, mostJobs))
        ->capture_default_str();
    command.add_flag("--json", options.json,
                     "JSON instead of text: a line for each change, the results last");
    // For programs that start this one, not for people: help leaves it out.
    command.add_flag("--until-input-ends", options.untilInputEnds)->group("");
}

WatchInput watchInput(const FleetOptions& options) {
    return options.untilInputEnds ? WatchInput::Yes : WatchInput::No;
}

std::vector<FleetDisplay> chosenDisplays(const FleetOptions& options, const FleetDefaults& defaults) {
    return options.list.empty() ? namedDisplays(options, defaults) : listedDisplays(options, defaults);
}

} // namespace orvista::console
