#include "console/ProjectSnapshots.h"

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
void expectNoErrors(const std::string& path, const Project& project, bool tellEach) {
    const int columns = panelColumns(std::nullopt, notesBeside(path));
    const Findings findings = checkProject(project, FolderBitmaps(project.ProjPath), columns);
    if (findings.counts.errors == 0)
        return;
    std::string first;
    for (const Finding& finding : findings.list) {
        if (finding.severity() != Severity::Error)
            continue;
        if (tellEach)
            complain(findingText(path, finding));
        if (first.empty())
            first = findingText(path, finding);
    }
    const std::size_t count = findings.counts.errors;
    throw CommandFailure(ExitStatus::Found,
                         countedText(count, "error") + (count > 1 ? ", the first: " : ": ") + first);
}

} // namespace

ProjectSnapshots::ProjectSnapshots(std::span<const FleetTask> tasks, std::string scratch,
                                   const SnapshotWishes& wishes, const Interruption& interruption)
    : scratch_(std::move(scratch)), wishes_(wishes) {
    for (const FleetTask& task : tasks) {
        const std::string& project = task.display.project;
        if (interruption.came())
            return;
        if (!snapshots_.contains(project))
            snapshots_.emplace(project, snapshotOf(project));
    }
}

void ProjectSnapshots::prepare(std::span<FleetTask> tasks, std::string_view work) const {
    for (FleetTask& task : tasks) {
        const auto found = snapshots_.find(task.display.project);
        if (found == snapshots_.end())
            continue;
        const Snapshot& snapshot = found->second;
        task.request = {std::string(work), displayArgument(task.display.address), snapshot.path};
        task.refusal = snapshot.refusal;
        task.fingerprint = [print = snapshot.fingerprint](const TransferEnd&) { return print; };
    }
}

ProjectSnapshots::Snapshot ProjectSnapshots::snapshotOf(const std::string& path) {
    Snapshot snapshot;
    try {
        write(path, snapshot);
    } catch (const std::system_error& failure) {
        if (std::string fault = writingFault(scratch_); !fault.empty())
            throw CommandFailure(ExitStatus::Unusable, fault);
        refuse(snapshot, CommandFailure(ExitStatus::Unusable, path + ": " + failure.code().message()));
    } catch (const CommandFailure& failure) {
        refuse(snapshot, failure);
    }
    return snapshot;
}

void ProjectSnapshots::write(const std::string& path, Snapshot& snapshot) {
    const Project project = readWholeProject(path, wishes_.notWhole);
    if (wishes_.fingerprints)
        snapshot.fingerprint = fingerprint(DisplayContents::ofProject(project));
    if (wishes_.check)
        expectNoErrors(path, project, wishes_.tellEach);
    const std::string folder = PathRules::native().join(scratch_, decimalText(snapshots_.size()));
    std::filesystem::create_directory(systemPath(folder));
    snapshot.path = writeSnapshot(project, folder);
}

void ProjectSnapshots::refuse(Snapshot& snapshot, const CommandFailure& why) {
    snapshot.refusal = why.what();
    worst_ = std::max(worst_.value_or(why.status()), why.status());
    // The errors of a check have been told.
    if (wishes_.tellEach && why.status() == ExitStatus::Unusable)
        complain(why.what());
}

} // namespace orvista::console
