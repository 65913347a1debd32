#include "console/FleetOptions.h"

#include "console/Displays.h"
#include "console/OptionChecks.h"
#include "console/Output.h"
#include "console/ReadFiles.h"
#include "console/Sheets.h"
#include "model/ProjectFile.h"
#include "model/Text.h"
#include "sheets/FleetSheet.h"

#include <CLI/App.hpp>

#include <map>
#include <set>

namespace orvista::console {

namespace {

constexpr std::size_t mostJobs = 60;

ChosenDisplays listedDisplays(const FleetOptions& options, FleetDefaults defaults) {
    if (options.untilInputEnds && options.list == standardInput)
        throw CommandFailure(ExitStatus::Unusable,
                             "--until-input-ends leaves no standard input for the list");
    defaults.folder = folderOfSheet(options.list);
    ChosenDisplays chosen;
    try {
        SheetErrors errors;
        chosen.displays = readFleetSheet(sheetBytes(options.list), defaults, errors);
        reportErrors(options.list, errors);
        if (!errors.none())
            chosen.fault.emplace(ExitStatus::Unusable, sheetName(options.list) + ": nothing was begun");
    } catch (const CommandFailure& unreadable) {
        chosen.fault = unreadable;
    }
    return chosen;
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

void expectOutputsApart(const FleetOptions& options, const std::vector<FleetDisplay>& displays) {
    if (options.report.empty() && options.journal.empty())
        return;
    ReadFiles files;
    files.add(options.list);
    std::set<std::string> projects;
    for (const FleetDisplay& display : displays)
        if (projects.insert(display.project).second)
            files.addProject(display.project);
    files.expectApart(options.report);
    files.expectApart(options.journal);
    if (!options.report.empty() &&
        (options.report == options.journal || isSameFile(options.report, options.journal)))
        throw CommandFailure(ExitStatus::Unusable, options.report + " cannot be both report and journal");
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
    command
        .add_option("--journal", options.journal, "Append a line of JSON for each display to this file, too")
        ->type_name("FILE.jsonl");
    command.add_flag("--json", options.json,
                     "JSON instead of text: a line for each change, the results last");
    // For programs that start this one, not for people: help leaves it out.
    command.add_flag("--until-input-ends", options.untilInputEnds)->group("");
}

void addReport(CLI::App& command, FleetOptions& options) {
    command.add_option("--report", options.report, "Write the results as a table, too")
        ->type_name("FILE.csv");
}

WatchInput watchInput(const FleetOptions& options) {
    return options.untilInputEnds ? WatchInput::Yes : WatchInput::No;
}

ChosenDisplays chosenDisplays(const FleetOptions& options, const FleetDefaults& defaults) {
    ChosenDisplays chosen = !options.chosen.empty() ? ChosenDisplays{options.chosen, {}}
                            : options.list.empty()  ? ChosenDisplays{namedDisplays(options, defaults), {}}
                                                    : listedDisplays(options, defaults);
    expectOutputsApart(options, chosen.displays);
    return chosen;
}

} // namespace orvista::console
