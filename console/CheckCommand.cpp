#include "console/Commands.h"

#include "check/FileFindings.h"
#include "check/FindingList.h"
#include "check/Fixing.h"
#include "check/MasterCheck.h"
#include "check/ProjectCheck.h"
#include "console/FindingText.h"
#include "console/FixJson.h"
#include "console/GivenProject.h"
#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/Release.h"
#include "display/FolderBitmaps.h"
#include "items/MasterBitmaps.h"
#include "model/JsonText.h"
#include "model/JsonValue.h"
#include "model/Numbers.h"

#include <CLI/App.hpp>

#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace orvista::console {

namespace {

struct CheckOptions {
    std::vector<std::string> projects;
    std::vector<std::string> displays; ///< of masters
    std::optional<int> columns;
    bool strict = false;
    bool notes = false;
    bool json = false;
};

/// All that was found, and how the check ends.
struct Report {
    std::vector<std::string> lines;
    JsonValue::Array list;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    JsonValue::Array unreadable;
    std::set<int> columns; ///< of the displays
};

/// \param fixing null where what is found is not mended in the project itself
JsonValue objectOf(const std::string& project, const ProjectView& view, const Finding& finding,
                   Fixing* fixing) {
    JsonValue::Object object = findingObject(project, finding);
    if (view.display != nullptr)
        object.push_back({"display", view.display->name});
    JsonValue::Array fixes;
    if (fixing != nullptr && finding.rule().fixes != Fixes::None)
        for (const Fix& fix : fixing->fixesOf(finding))
            fixes.push_back(fixObject(fix));
    object.push_back({"fixes", std::move(fixes)});
    return object;
}

/// Checks one project that was named: as it is, or as its displays have it.
class CheckedProject {
public:
    CheckedProject(const std::string& path, const CheckOptions& options, Report& report)
        : path_(path),
          options_(options),
          report_(report),
          given_(path, readProject(path, &remarks_)),
          bitmaps_(given_.project().ProjPath) {
        if (given_.master() != nullptr)
            check_.emplace(*given_.master(), bitmaps_);
    }

    void run() {
        Findings found = fileFindings(remarks_);
        if (check_ && !options_.displays.empty()) { // what the file lost, all displays lack
            tell(given_.itself(), found);
            found = {};
        }
        given_.eachView(options_.displays, [&](const ProjectView& view) {
            Findings ofView = found;
            append(ofView, findingsIn(view));
            tell(view, ofView);
            return ExitStatus::Well;
        });
    }

private:
    int columnsOf(const ProjectView& view) const { return panelColumns(options_.columns, view.notes); }

    Findings findingsIn(const ProjectView& view) {
        const int columns = columnsOf(view);
        const Notes notes = options_.notes ? Notes::Included : Notes::LeftOut;
        report_.columns.insert(columns);
        if (!check_)
            return checkProject(view.project, bitmaps_, columns, notes);
        if (view.display == nullptr)
            return check_->checkItself(columns, notes);
        return check_->check({view.project, view.placeErrors, view.errorsNotListed}, columns, notes);
    }

    void tell(const ProjectView& view, const Findings& findings) {
        const MasterBitmaps named(bitmaps_);
        const BitmapProvider& bitmaps = view.isMaster ? static_cast<const BitmapProvider&>(named) : bitmaps_;
        std::optional<Fixing> fixing;
        if (options_.json && view.display == nullptr)
            fixing.emplace(view.project, bitmaps, columnsOf(view),
                           check_ ? given_.master()->items() : std::vector<Item>());
        for (const Finding& finding : findings.list) {
            if (options_.json)
                report_.list.push_back(objectOf(path_, view, finding, fixing ? &*fixing : nullptr));
            else
                report_.lines.push_back(findingText(view.title, finding));
        }
        if (findings.notListed() > 0)
            complain(view.title + ": and " + decimalText(findings.notListed()) + " more");
        report_.errors += findings.counts.errors;
        report_.warnings += findings.counts.warnings;
    }

    const std::string& path_;
    const CheckOptions& options_;
    Report& report_;
    FileRemarks remarks_;
    GivenProject given_;
    FolderBitmaps bitmaps_;
    std::optional<MasterCheck> check_; ///< of a master
};

/// Null where the projects' displays differ.
JsonValue columnsOf(const Report& report, const CheckOptions& options) {
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
            CheckedProject(options.projects[i], options, report).run();
        } catch (const CommandFailure& failure) {
            progress.clear();
            complain(failure.what());
            report.unreadable.push_back(
                JsonValue::Object{{"project", options.projects[i]}, {"text", failure.what()}});
        }
        progress.clear();
        for (const std::string& line : std::exchange(report.lines, {}))
            printLine(line);
    }
    if (options.json)
        print(jsonText(JsonValue::Object{{"version", programRelease},
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
    addDisplayNames(*command, options->displays);
    addPanelColumns(*command, options->columns);
    command->add_flag("--strict", options->strict, "End with status 1 on warnings, too");
    command->add_flag("--notes", options->notes, "Name variables that are set up and shown by no message");
    command->add_flag("--json", options->json, "JSON instead of text");
    command->footer(
        "Examples:\n"
        "  orvista check PUMPSTATION.orx\n"
        "  orvista check --strict --columns 256 plant/*.orx\n"
        "  orvista check --json PUMPSTATION.orx\n"
        "  orvista check PLANT.orx --display \"Line 17,Line 18\"\n\n"
        "Ends with status 0 when there is no error, 1 when there is one, 2 when a project cannot be read.");
    command->callback([options, &run] { run = [options] { return checkAll(*options); }; });
}

} // namespace orvista::console
