#include "console/Commands.h"

#include "check/FixRun.h"
#include "check/Rules.h"
#include "console/FindingText.h"
#include "console/FixJson.h"
#include "console/GivenProject.h"
#include "console/NewFolder.h"
#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/ReadFiles.h"
#include "console/Release.h"
#include "console/Suggestion.h"
#include "model/Change.h"
#include "model/JsonText.h"
#include "model/JsonValue.h"
#include "model/Lines.h"
#include "model/Numbers.h"
#include "model/Quotation.h"

#include <CLI/App.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Mends what the check finds, as far as the program knows how.
namespace orvista::console {

namespace {

struct FixOptions {
    std::string project;
    std::vector<std::string> codes;
    std::vector<std::string> items;
    std::string output;
    std::optional<int> columns;
    bool dryRun = false;
    bool json = false;
    bool notWhole = false;
};

Code codeNamed(const std::string& name) {
    const Rule* const rule = ruleNamed(name);
    if (rule != nullptr && rule->fixes != Fixes::None)
        return rule->code;
    if (rule != nullptr)
        throw CommandFailure(ExitStatus::Unusable,
                             "--only: " + name + " is for people to mend; see orvista help " + name);
    std::vector<std::string> names;
    for (const Rule& known : rules())
        if (known.fixes != Fixes::None)
            names.emplace_back(known.name);
    throw CommandFailure(ExitStatus::Unusable, withSuggestion("--only: " + name + " is not a code", name,
                                                              names, "orvista help codes"));
}

Item itemOf(const std::string& name, const ProjectNotes& notes) {
    if (const auto item = itemCalled(name, notes))
        return *item;
    throw CommandFailure(ExitStatus::Unusable, "--item: " + quotation(name) + " is neither a message nor a " +
                                                   "variable, such as STDMSG3 or RegVar12");
}

FixChoice choiceOf(const FixOptions& options, const ProjectNotes& notes) {
    FixChoice choice;
    std::ranges::transform(options.codes, std::back_inserter(choice.codes), codeNamed);
    std::ranges::transform(options.items, std::back_inserter(choice.items),
                           [&](const std::string& name) { return itemOf(name, notes); });
    std::ranges::sort(choice.items);
    choice.items.erase(std::unique(choice.items.begin(), choice.items.end()), choice.items.end());
    return choice;
}

/// The same of the items that have no places of a master.
/// \throws CommandFailure where that leaves none
FixChoice withoutPlaces(FixChoice choice, const std::vector<Item>& withPlaces) {
    if (choice.items.empty())
        choice.items = {allItems().begin(), allItems().end()};
    std::erase_if(choice.items,
                  [&](Item item) { return std::ranges::find(withPlaces, item) != withPlaces.end(); });
    if (choice.items.empty())
        throw CommandFailure(ExitStatus::Unusable, "--item: places of a master are for people to mend");
    return choice;
}

/// Each line of the text with a mark in front; none for no line.
void printMarked(std::string_view mark, std::string_view text) {
    while (!text.empty()) {
        const auto end = std::min(text.find(lineEnd), text.size());
        printLine(std::string(mark) + printable(text.substr(0, end)));
        text.remove_prefix(std::min(end + lineEnd.size(), text.size()));
    }
}

void printMended(const MendedFinding& mended) {
    printLine(placeText(mended.finding.place) + ": " + mended.fix.caption + " [" +
              std::string(mended.finding.rule().name) + "]");
    for (std::size_t i = 0; i < mended.lines.size(); ++i) {
        const Change& change = mended.changes[i];
        const bool isScript = change.field == &scriptField();
        const std::string name =
            isScript ? std::string() : nameOf(change.item) + " " + std::string(change.field->name) + " ";
        printMarked("- " + name, mended.lines[i].before);
        printMarked("+ " + name, mended.lines[i].after);
    }
}

JsonValue mendedObject(const std::string& project, const MendedFinding& mended) {
    JsonValue::Object object = findingObject(project, mended.finding);
    std::ranges::move(fixObject(mended.fix), std::back_inserter(object));
    return object;
}

void report(const FixOptions& options, int columns, const std::vector<MendedFinding>& all, std::size_t left) {
    if (!options.json) {
        for (const MendedFinding& mended : all)
            printMended(mended);
        print((all.empty() ? "Nothing" : countedText(all.size(), "finding")) +
              (options.dryRun ? " would be mended, " : " mended, ") + decimalText(left) + " left\n");
        return;
    }
    JsonValue::Array list;
    for (const MendedFinding& mended : all)
        list.push_back(mendedObject(options.project, mended));
    print(jsonText(JsonValue::Object{{"version", programRelease},
                                     {"project", options.project},
                                     {"mended", std::move(list)},
                                     {"left", left},
                                     {"columns", columns}}),
          Reader::Program);
}

/// The project to write.
std::string targetOf(const FixOptions& options) {
    if (options.output.empty())
        return options.project;
    std::string target = writtenProjectName(options.output);
    if (isSameFile(options.project, target))
        return options.project;
    expectApartFromProject(target, options.project);
    expectNoOtherProject(options.project, target);
    return target;
}

void save(const FixOptions& options, const std::string& target, Project project,
          const std::vector<MendedFinding>& all) {
    for (const MendedFinding& mended : all)
        applyChanges(project, mended.changes);
    if (target == options.project)
        return saveProject(target, project);
    makeFolderOf(target);
    copyBitmaps(options.project, target);
    saveProject(target, project);
    copyNotesBeside(options.project, target);
}

ExitStatus fixProject(const FixOptions& options) {
    const GivenProject given(options.project, readWholeProject(options.project, options.notWhole));
    const FixChoice choice = choiceOf(options, given.notes());
    const int columns = panelColumns(options.columns, given.notes());
    const std::string target = targetOf(options);
    const ProjectView view = given.itself();
    const ViewBitmaps bitmaps(view);
    const auto kept = given.master() != nullptr ? given.master()->items() : std::vector<Item>();
    Fixing fixing(view.project, bitmaps.provider(), columns, kept);
    Progress progress;
    const FixChoice mended = withoutPlaces(choice, kept);
    const auto all = mendAll(fixing, mended, [&](std::size_t count) {
        if (count > 0)
            progress.show(countedText(count, "finding") + " mended");
        return true;
    });
    progress.clear();
    if (!all.empty() && !options.dryRun)
        save(options, target, given.project(), all);
    const std::size_t left = countOf(fixing, choice);
    report(options, columns, all, left);
    return left == 0 ? ExitStatus::Well : ExitStatus::Found;
}

std::string codesOnDemand() {
    std::string names;
    for (const Rule& rule : rules())
        if (rule.fixes == Fixes::OnDemand)
            names.append(names.empty() ? "" : ", ").append(rule.name);
    return names;
}

} // namespace

void addFix(CLI::App& program, Run& run) {
    const auto options = std::make_shared<FixOptions>();
    CLI::App* command = program.add_subcommand("fix", "Mend what the check finds, and save the project");
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command
        ->add_option("--only", options->codes,
                     "Findings of these codes; else of all that are sure to be meant")
        ->type_name("CODE,...")
        ->delimiter(',');
    command->add_option("--item", options->items, "In these messages and variables; else in all")
        ->type_name("ITEM,...")
        ->delimiter(',');
    addPanelColumns(*command, options->columns);
    command->add_flag("--dry-run", options->dryRun, "Show old and new, and change nothing");
    command->add_option("-o,--output", options->output, "The project to write, in a folder of its own")
        ->type_name("NEWFOLDER/NAME.orx");
    command->add_flag("--json", options->json, "JSON instead of text");
    addNotWhole(*command, options->notWhole);
    command->footer(
        "Examples:\n"
        "  orvista fix PUMPSTATION.orx --dry-run\n"
        "  orvista fix PUMPSTATION.orx --only field-gap,text-cut\n"
        "  orvista fix PUMPSTATION.orx --only bad-argument --item STDMSG3 -o mended/PUMPSTATION.orx\n\n"
        "Each finding gets the first fix after which it is gone and nothing else is found, old and new are\n"
        "printed, and the project is saved once. These are mended with --only alone, because a fix of them\n"
        "guesses what was meant:\n  " +
        codesOnDemand() +
        "\nbut for a default that is the same number written plainly. Of a master texts with places are\n"
        "left as they are.\n"
        "Ends with status 0 when nothing of the chosen codes is left, 1 when something is, 2 when the\n"
        "project cannot be read. Where there is nothing to mend, nothing is written.");
    command->callback([options, &run] { run = [options] { return fixProject(*options); }; });
}

} // namespace orvista::console
