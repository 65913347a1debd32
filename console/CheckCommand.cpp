#include "console/Commands.h"

#include "check/FileFindings.h"
#include "check/FindingList.h"
#include "check/Fixing.h"
#include "check/ProjectCheck.h"
#include "console/FindingText.h"
#include "console/FixJson.h"
#include "console/JsonText.h"
#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "display/FolderBitmaps.h"
#include "model/Numbers.h"

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace orvista::console {

namespace {

struct CheckOptions {
    std::vector<std::string> projects;
    std::optional<int> columns;
    bool strict = false;
    bool notes = false;
    bool json = false;
};

using Json = nlohmann::ordered_json;

/// All that was found, and how the check ends.
struct Report {
    std::vector<std::string> lines;
    Json list = Json::array();
    std::size_t errors = 0;
    std::size_t warnings = 0;
    Json unreadable = Json::array();
    std::set<int> columns; ///< of the displays
};

Json objectOf(const std::string& project, const Finding& finding, Fixing& fixing) {
    Json object = findingObject(project, finding);
    Json fixes = Json::array();
    if (finding.rule().fixes != Fixes::None)
        for (const Fix& fix : fixing.fixesOf(finding))
            fixes.push_back(fixObject(fix));
    object["fixes"] = fixes;
    return object;
}

void checkOne(const std::string& path, const CheckOptions& options, Report& report) {
    FileRemarks remarks;
    const Project project = readProject(path, &remarks);
    const FolderBitmaps bitmaps(project.ProjPath);
    const int columns = panelColumns(options.columns, notesBeside(path));
    report.columns.insert(columns);
    Findings findings = fileFindings(remarks);
    append(findings,
           checkProject(project, bitmaps, columns, options.notes ? Notes::Included : Notes::LeftOut));
    Fixing fixing(project, bitmaps, columns);
    for (const Finding& finding : findings.list) {
        if (options.json)
            report.list.push_back(objectOf(path, finding, fixing));
        else
            report.lines.push_back(findingText(path, finding));
    }
    if (findings.notListed() > 0)
        complain(path + ": and " + decimalText(findings.notListed()) + " more");
    report.errors += findings.counts.errors;
    report.warnings += findings.counts.warnings;
}

/// Null where the projects' displays differ.
Json columnsOf(const Report& report, const CheckOptions& options) {
    if (report.columns.size() > 1)
        return nullptr;
    return report.columns.empty() ? panelColumns(options.columns, {}) : *report.columns.begin();
}

ExitStatus checkAll(const CheckOptions& options) {
    Report report;
    Progress progress;
    for (std::size_t i = 0; i < options.projects.size(); ++i) {
        if (options.projects.size() > 1)
            progress.show(decimalText(i + 1) + " of " + decimalText(options.projects.size()) + ": " +
                          options.projects[i]);
        try {
            checkOne(options.projects[i], options, report);
        } catch (const CommandFailure& failure) {
            progress.clear();
            complain(failure.what());
            report.unreadable.push_back({{"project", options.projects[i]}, {"text", failure.what()}});
        }
        progress.clear();
        for (const std::string& line : std::exchange(report.lines, {}))
            printLine(line);
    }
    if (options.json)
        print(jsonText({{"version", programRelease},
                        {"findings", report.list},
                        {"errors", report.errors},
                        {"warnings", report.warnings},
                        {"unreadable", report.unreadable},
                        {"columns", columnsOf(report, options)}}),
              Reader::Program);
    if (!report.unreadable.empty())
        return ExitStatus::Unusable;
    const bool isBad = report.errors > 0 || (options.strict && report.warnings > 0);
    return isBad ? ExitStatus::Found : ExitStatus::Well;
}

} // namespace

void addCheck(CLI::App& program, Run& run) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* command = program.add_subcommand("check", "Tell what will go wrong on the display");
    command->add_option("PROJECT", options->projects, "Project files, .orx")->required();
    addPanelColumns(*command, options->columns);
    command->add_flag("--strict", options->strict, "End with status 1 on warnings, too");
    command->add_flag("--notes", options->notes, "Name variables that are set up and shown by no message");
    command->add_flag("--json", options->json, "JSON instead of text");
    command->footer(
        "Examples:\n"
        "  orvista check PUMPSTATION.orx\n"
        "  orvista check --strict --columns 256 plant/*.orx\n"
        "  orvista check --json PUMPSTATION.orx\n\n"
        "Ends with status 0 when there is no error, 1 when there is one, 2 when a project cannot be read.");
    command->callback([options, &run] { run = [options] { return checkAll(*options); }; });
}

} // namespace orvista::console
