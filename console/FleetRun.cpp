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

/// The next display's turn. False when there is none left.
bool FleetRun::begin() {
    if (next_ == tasks_.size())
        return false;
    Turn turn;
    turn.task = next_++;
    turn.began = Clock::now();
    const FleetTask& task = tasks_[turn.task];
    if (task.refusal.empty())
        start(std::move(turn));
    else
        finish(turn, {FleetOutcome::Refused, task.refusal, 0});
    return true;
}

void FleetRun::start(Turn turn) {
    const std::string request = requestBytes(tasks_[turn.task].request);
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
        turns_.push_back(std::move(turn));
    } catch (const std::system_error& failure) {
        finish(turn, failedTransfer("its process could not be started: " + failure.code().message()));
    }
}

void FleetRun::takeWhatCame() {
    for (std::size_t i = 0; i < processes_.size();) {
        const bool goesOn = processes_[i]->read(turns_[i].unread);
        takeReports(turns_[i]);
        if (goesOn && !turns_[i].end) {
            ++i;
            continue;
        }
        const auto place = static_cast<std::ptrdiff_t>(i);
        if (goesOn && next_ < tasks_.size())
            idle_.push_back(std::move(processes_[i]));
        processes_.erase(processes_.begin() + place);
        Turn over = std::move(turns_[i]);
        turns_.erase(turns_.begin() + place);
        finish(over, over.end ? *std::move(over.end)
                              : endedFromOutside(over.sending, over.arrived, "its process ended"));
    }
}

void FleetRun::takeReports(Turn& turn) {
    std::string_view rest = turn.unread;
    while (auto report = takeReport(rest)) {
        if (report->end)
            turn.end = std::move(report->end);
        else if (report->state)
            note(turn, *std::move(report->state));
    }
    turn.unread = std::string(rest);
}

void FleetRun::note(Turn& turn, DisplayState state) {
    if (state.state == sendingState && !state.file.empty()) {
        turn.sending.resize(state.files);
        turn.sending.push_back(state.file);
        turn.arrived = state.files;
    } else if (state.state == verifyingState) {
        turn.arrived = turn.sending.size();
    }
    turn.of = std::max(turn.of, state.of);
    const FleetResult& result = results_[turn.task];
    state.name = result.name;
    state.address = result.address;
    state.seconds = std::chrono::duration<double>(Clock::now() - turn.began).count();
    output_.show(state);
}

void FleetRun::finish(Turn& turn, TransferEnd end) {
    const FleetTask& task = tasks_[turn.task];
    if (end.outcome == FleetOutcome::Done && task.complete)
        end = task.complete(std::move(end));
    FleetResult& result = results_[turn.task];
    result.end = std::move(end);
    result.seconds = std::chrono::duration<double>(Clock::now() - turn.began).count();
    output_.show(task, result, turn.of);
}

void FleetRun::endAll() {
    idle_.clear();
    processes_.clear();
    for (Turn& turn : std::exchange(turns_, {}))
        finish(turn,
               turn.end ? *std::move(turn.end) : endedFromOutside(turn.sending, turn.arrived, "interrupted"));
    for (; next_ < tasks_.size(); ++next_)
        output_.show(tasks_[next_], results_[next_], 0);
}

} // namespace orvista::console
