#include "console/FleetRun.h"

#include "console/WorkerReport.h"
#include "link/TransferControls.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace orvista::console {

namespace {

/// What an upload that was ended from outside leaves; anything else leaves nothing.
TransferEnd endedFromOutside(std::vector<std::string> sending, std::size_t arrived, std::string why) {
    if (arrived < sending.size())
        why += " while " + sending[arrived] + " was sent";
    sending.resize(arrived);
    return stoppedUpload(sending, why);
}

} // namespace

FleetRun::FleetRun(std::vector<FleetTask> tasks, std::size_t jobs, std::string scratch, FleetOutput& output)
    : tasks_(std::move(tasks)), jobs_(jobs), environment_(workerEnvironment(scratch)), output_(output) {
    results_.reserve(tasks_.size());
    for (const FleetTask& task : tasks_)
        results_.push_back(resultWithoutTurn(task));
}

std::vector<FleetResult> FleetRun::run(Interruption& interruption) {
    ChildProcess::workInBulk();
    while (next_ < tasks_.size() || !processes_.empty()) {
        while (!interruption.came() && processes_.size() < jobs_ && begin()) {
        }
        if (!interruption.came() && !processes_.empty())
            ChildProcess::waitForAny(processes_, interruption);
        takeWhatCame();
        if (interruption.came())
            endAll();
    }
    return std::move(results_);
}

/// Takes on the next display. False when there is none left.
bool FleetRun::begin() {
    if (next_ == tasks_.size())
        return false;
    ActiveTask active;
    active.index = next_++;
    active.began = Clock::now();
    const FleetTask& task = tasks_[active.index];
    if (task.refusal.empty())
        start(std::move(active));
    else
        finish(active, {FleetOutcome::Refused, task.refusal, 0});
    return true;
}

void FleetRun::start(ActiveTask active) {
    const std::string request = requestBytes(tasks_[active.index].request);
    std::unique_ptr<ChildProcess> process;
    if (!idle_.empty()) {
        process = std::move(idle_.back());
        idle_.pop_back();
    }
    try {
        if (!process || !process->write(request)) {
            if (ChildProcess::isCopy && !library_)
                library_ = keptTransferLibrary();
            process = std::make_unique<ChildProcess>(worker(), environment_);
            process->write(request); // where that fails, nothing is read from it either
        }
        processes_.push_back(std::move(process));
        activeTasks_.push_back(std::move(active));
    } catch (const std::system_error& failure) {
        finish(active, failedTransfer("its process could not be started: " + failure.code().message()));
    }
}

void FleetRun::takeWhatCame() {
    for (std::size_t i = 0; i < processes_.size();) {
        const bool goesOn = processes_[i]->read(activeTasks_[i].unread);
        takeReports(activeTasks_[i]);
        if (goesOn && !activeTasks_[i].end) {
            ++i;
            continue;
        }
        const auto place = static_cast<std::ptrdiff_t>(i);
        if (goesOn && next_ < tasks_.size())
            idle_.push_back(std::move(processes_[i]));
        processes_.erase(processes_.begin() + place);
        ActiveTask over = std::move(activeTasks_[i]);
        activeTasks_.erase(activeTasks_.begin() + place);
        finish(over, over.end ? *std::move(over.end)
                              : endedFromOutside(over.sending, over.arrived, "its process ended"));
    }
}

void FleetRun::takeReports(ActiveTask& active) {
    std::string_view rest = active.unread;
    while (auto report = takeReport(rest)) {
        if (report->end)
            active.end = std::move(report->end);
        else if (report->state)
            note(active, *std::move(report->state));
    }
    active.unread = std::string(rest);
}

void FleetRun::note(ActiveTask& active, DisplayState state) {
    if (state.state == sendingState && !state.file.empty()) {
        active.sending.resize(state.files);
        active.sending.push_back(state.file);
        active.arrived = state.files;
    } else if (state.state == verifyingState) {
        active.arrived = active.sending.size();
    }
    active.of = std::max(active.of, state.of);
    const FleetResult& result = results_[active.index];
    state.name = result.name;
    state.address = result.address;
    state.seconds = std::chrono::duration<double>(Clock::now() - active.began).count();
    output_.show(state);
}

void FleetRun::finish(ActiveTask& active, TransferEnd end) {
    const FleetTask& task = tasks_[active.index];
    if (end.outcome == FleetOutcome::Done && task.complete)
        end = task.complete(std::move(end));
    FleetResult& result = results_[active.index];
    result.end = std::move(end);
    result.seconds = std::chrono::duration<double>(Clock::now() - active.began).count();
    output_.show(task, result, active.of);
}

void FleetRun::endAll() {
    idle_.clear();
    processes_.clear();
    for (ActiveTask& active : std::exchange(activeTasks_, {}))
        finish(active, active.end ? *std::move(active.end)
                                  : endedFromOutside(active.sending, active.arrived, "interrupted"));
    for (; next_ < tasks_.size(); ++next_)
        output_.show(tasks_[next_], results_[next_], 0);
}

} // namespace orvista::console
