#include "console/GivenProject.h"

#include "check/MasterCheck.h"
#include "console/CommaList.h"
#include "console/FindingText.h"
#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Sheets.h"
#include "console/Suggestion.h"
#include "items/NotesFile.h"
#include "model/Numbers.h"
#include "model/SystemPath.h"
#include "model/Text.h"
#include "sheets/MasterList.h"

#include <CLI/App.hpp>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

namespace orvista::console {

namespace {

constexpr std::string_view allDisplays = "all";

/// The texts, each split at its commas unless it is a name as a whole.
std::vector<std::string> splitNames(const std::vector<std::string>& texts,
                                    const std::vector<FleetDisplay>& displays) {
    std::vector<std::string> names;
    for (const std::string& text : texts) {
        if (std::ranges::any_of(displays,
                                [&](const auto& one) { return equalsIgnoringCase(one.name, text); })) {
            names.emplace_back(text);
            continue;
        }
        std::ranges::move(betweenCommas(text), std::back_inserter(names));
    }
    return names;
}

bool areAll(const std::vector<std::string>& names) {
    return names.size() == 1 && names.front() == allDisplays;
}

/// \throws CommandFailure where there is none
const FleetDisplay& displayCalled(const std::string& name, const std::vector<FleetDisplay>& displays) {
    std::vector<std::string> names;
    for (const FleetDisplay& display : displays) {
        if (equalsIgnoringCase(display.name, name))
            return display;
        names.push_back(display.name);
    }
    const std::string closest = closestWord(name, names);
    throw CommandFailure(ExitStatus::Unusable,
                         "the list has no display " + name +
                             (closest.empty() ? "" : "; did you mean " + closest + "?"));
}

} // namespace

void expectFilled(const ProjectView& view) {
    if (view.placeErrors.empty())
        return;
    for (const PlaceError& error : view.placeErrors)
        complain(findingText(view.title, findingOf(error)));
    throw CommandFailure(ExitStatus::Found,
                         view.title + ": " +
                             countedText(view.placeErrors.size() + view.errorsNotListed, "place") +
                             " cannot be filled");
}

std::vector<FleetDisplay> displaysOfList(const std::string& list, const std::string& project) {
    SheetErrors errors;
    std::vector<FleetDisplay> displays = masterDisplays(sheetBytes(list), list, project, errors);
    reportErrors(list, errors);
    if (!errors.none())
        throw CommandFailure(ExitStatus::Unusable, sheetName(list) + " cannot be used");
    if (displays.empty())
        throw CommandFailure(ExitStatus::Unusable, sheetName(list) + " has no display of " + project);
    return displays;
}

std::vector<FleetDisplay> displaysNamed(const std::vector<std::string>& names,
                                        const std::vector<FleetDisplay>& displays) {
    if (areAll(names))
        return displays;
    std::vector<FleetDisplay> chosen;
    for (const std::string& name : splitNames(names, displays)) {
        const FleetDisplay& display = displayCalled(name, displays);
        if (std::ranges::find(chosen, display.name, &FleetDisplay::name) == chosen.end())
            chosen.push_back(display);
    }
    return chosen;
}

std::string listOfMaster(const std::string& project) {
    const auto list = readNotesFile(notesPath(project)).notes.masterList;
    return list ? masterListPath(project, *list) : std::string();
}

GivenProject::GivenProject(std::string path, Project project)
    : path_(std::move(path)), project_(std::move(project)) {
    NotesReading reading = notesReadBeside(path_);
    notes_ = std::move(reading.notes);
    mayHideMaster_ = reading.mayHideMaster;
    if (notes_.masterList)
        master_.emplace(project_);
}

void GivenProject::expectNoHiddenMaster() const {
    if (const std::string fault = hiddenMasterFault(path_, project_, mayHideMaster_); !fault.empty())
        throw CommandFailure(ExitStatus::Unusable, fault);
}

const Master& GivenProject::expectMaster() const {
    if (!master_)
        throw CommandFailure(ExitStatus::Unusable,
                             path_ + " is not a master: \"orvista master\" makes it one");
    return *master_;
}

const std::vector<FleetDisplay>& GivenProject::displays() {
    if (!displays_) {
        expectMaster();
        readList(masterListPath(path_, *notes_.masterList));
    }
    return *displays_;
}

void GivenProject::readList(const std::string& path) {
    expectMaster();
    displays_ = displaysOfList(path, path_);
}

ProjectView GivenProject::itself() const {
    return {path_, path_, master_ ? master_->itself() : project_, notes_, master_.has_value()};
}

ProjectView GivenProject::of(const FleetDisplay& display) const {
    Expansion expansion = expectMaster().expand(display);
    return {path_,
            path_ + " (" + display.name + ")",
            std::move(expansion.project),
            expandedNotes(notes_, display),
            true,
            &display,
            std::move(expansion.errors),
            expansion.errorsNotListed};
}

ExitStatus GivenProject::eachView(const std::vector<std::string>& names,
                                  const std::function<ExitStatus(const ProjectView&)>& work) {
    if (names.empty() || (!master_ && areAll(names)))
        return work(itself());
    const std::vector<FleetDisplay> chosen = displaysNamed(names, displays());
    ExitStatus worst = ExitStatus::Well;
    for (const FleetDisplay& display : chosen) {
        try {
            worst = std::max(worst, work(of(display)));
        } catch (const CommandFailure& failure) {
            if (chosen.size() == 1)
                throw;
            complain(failure.what());
            worst = std::max(worst, failure.status());
        }
    }
    return worst;
}

void addDisplayNames(CLI::App& command, std::vector<std::string>& names) {
    command
        .add_option("--display", names,
                    "Of a master the projects of these displays of its list, joined by commas, or \"all\"")
        ->type_name("NAME")
        ->allow_extra_args(false); // projects follow
}

bool mayNameSeveral(const std::vector<std::string>& names) {
    return names.size() > 1 || areAll(names) ||
           (!names.empty() && names.front().find(',') != std::string::npos);
}

std::string fileOfDisplay(const std::string& file, const std::vector<std::string>& names,
                          const ProjectView& view) {
    if (view.display == nullptr || !mayNameSeveral(names))
        return file;
    const std::filesystem::path path = systemPath(file);
    return utf8Path(path.parent_path() / systemPath(utf8Path(path.stem()) + "-" + view.display->name +
                                                    utf8Path(path.extension())));
}

} // namespace orvista::console
