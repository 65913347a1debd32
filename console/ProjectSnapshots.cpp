#include "console/ProjectSnapshots.h"

#include "check/MasterCheck.h"
#include "check/ProjectCheck.h"
#include "compare/DisplayContents.h"
#include "console/FindingText.h"
#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "display/FolderBitmaps.h"
#include "link/ProjectSnapshot.h"
#include "model/Numbers.h"
#include "model/ScratchFolder.h"
#include "model/SystemPath.h"
#include "model/Text.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace orvista::console {

namespace {

/// "3 errors, the first: LINE3.orx:STDMSG4:2:1: error: ..."
/// \throws CommandFailure where there is one
void expectNoErrors(const std::string& title, const Findings& findings, bool tellEach) {
    if (findings.counts.errors == 0)
        return;
    std::string first;
    for (const Finding& finding : findings.list) {
        if (finding.severity() != Severity::Error)
            continue;
        if (tellEach)
            complain(findingText(title, finding));
        if (first.empty())
            first = findingText(title, finding);
    }
    const std::size_t count = findings.counts.errors;
    throw CommandFailure(ExitStatus::Found,
                         countedText(count, "error") + (count > 1 ? ", the first: " : ": ") + first);
}

Findings findingsOf(const ProjectView& view) {
    Findings findings;
    for (const PlaceError& error : view.placeErrors) {
        findings.list.push_back(findingOf(error));
        findings.counts.add(Severity::Error, 1);
    }
    findings.counts.add(Severity::Error, view.errorsNotListed);
    return findings;
}

} // namespace

ProjectSnapshots::ProjectSnapshots(std::span<const FleetTask> tasks, std::string scratch,
                                   const SnapshotWishes& wishes, const Interruption& interruption)
    : scratch_(std::move(scratch)), wishes_(wishes) {
    for (const FleetTask& task : tasks) {
        if (interruption.came())
            return;
        // What is no master is the same for all its displays.
        if (!snapshots_.contains({task.display.project, {}}) && !snapshots_.contains(keyOf(task.display)))
            takeSnapshot(task.display);
    }
}

void ProjectSnapshots::prepare(std::span<FleetTask> tasks, std::string_view work) const {
    for (FleetTask& task : tasks) {
        const auto found = snapshots_.find(keyOf(task.display));
        if (found == snapshots_.end())
            continue;
        const Snapshot& snapshot = found->second;
        task.request = {std::string(work), displayArgument(task.display.address), snapshot.path};
        task.refusal = snapshot.refusal;
        task.fingerprint = [print = snapshot.fingerprint](const TransferEnd&) { return print; };
    }
}

GivenProject& ProjectSnapshots::given(const std::string& path) {
    const auto known = given_.find(path);
    if (known != given_.end())
        return known->second;
    return given_.emplace(path, GivenProject(path, readWholeProject(path, wishes_.notWhole))).first->second;
}

ProjectSnapshots::Key ProjectSnapshots::keyOf(const FleetDisplay& display) const {
    const auto given = given_.find(display.project);
    const bool isOfMaster = given != given_.end() && given->second.master() != nullptr;
    return {display.project, isOfMaster ? display.name : std::string()};
}

void ProjectSnapshots::takeSnapshot(const FleetDisplay& display) {
    Snapshot snapshot;
    try {
        const GivenProject& project = given(display.project);
        project.expectNoHiddenMaster();
        write(project.master() != nullptr ? project.of(display) : project.itself(), snapshot);
    } catch (const std::system_error& failure) {
        if (std::string fault = writingFault(scratch_); !fault.empty())
            throw CommandFailure(ExitStatus::Unusable, fault);
        refuse(snapshot,
               CommandFailure(ExitStatus::Unusable, display.project + ": " + failure.code().message()));
    } catch (const CommandFailure& failure) {
        refuse(snapshot, failure);
    }
    snapshots_.emplace(keyOf(display), std::move(snapshot));
}

void ProjectSnapshots::write(const ProjectView& view, Snapshot& snapshot) {
    expectNoErrors(view.title, findingsOf(view), wishes_.tellEach);
    if (wishes_.fingerprints)
        snapshot.fingerprint = fingerprint(DisplayContents::ofProject(view.project));
    if (wishes_.check) {
        const FolderBitmaps bitmaps(view.project.ProjPath);
        const int columns = panelColumns(std::nullopt, view.notes);
        expectNoErrors(view.title, checkProject(view.project, bitmaps, columns), wishes_.tellEach);
    }
    const std::string folder = PathRules::native().join(scratch_, decimalText(snapshots_.size()));
    std::filesystem::create_directory(systemPath(folder));
    snapshot.path = view.isMaster ? ofMasters_[view.path].write(view.project, folder)
                                  : writeSnapshot(view.project, folder);
}

void ProjectSnapshots::refuse(Snapshot& snapshot, const CommandFailure& why) {
    snapshot.refusal = why.what();
    worst_ = std::max(worst_.value_or(why.status()), why.status());
    // The errors of a check have been told.
    if (wishes_.tellEach && why.status() == ExitStatus::Unusable)
        complain(why.what());
}

} // namespace orvista::console
