#include "console/FleetRun.h"

#include "console/Worker.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace orvista::console {

namespace {

/// What an upload that was ended from outside leaves; a download leaves nothing.
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
        results_.push_back({task.name, task.address, {}, 0});
}

std::vector<FleetResult> FleetRun::run(Interruption& interruption) {
    while (next_ < tasks_.size() || !processes_.empty()) {
        while (next_ < tasks_.size() && processes_.size() < jobs_ && !interruption.came())
            begin();
        if (!interruption.came() && !processes_.empty())
            ChildProcess::waitForAny(processes_, interruption);
        takeWhatCame();
        if (interruption.came())
            endAll();
    }
    return std::move(results_);
}

void FleetRun::begin() {
    Turn turn;
    turn.task = next_++;
    turn.began = Clock::now();
    if (const std::string& refusal = tasks_[turn.task].refusal; !refusal.empty()) {
        finish(turn, {FleetOutcome::Refused, refusal, 0});
        return;
    }
    try {
        processes_.push_back(std::make_unique<ChildProcess>(tasks_[turn.task].arguments, environment_));
        turns_.push_back(std::move(turn));
    } catch (const std::system_error& failure) {
        finish(turn, failedTransfer("its process could not be started: " + failure.code().message()));
    }
}

void FleetRun::takeWhatCame() {
    for (std::size_t i = 0; i < processes_.size();) {
        Turn& turn = turns_[i];
        const bool goesOn = processes_[i]->read(turn.unread);
        std::string_view rest = turn.unread;
        for (auto end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
            take(turn, rest.substr(0, end));
            rest.remove_prefix(end + 1);
        }
        turn.unread = std::string(rest);
        if (goesOn) {
            ++i;
            continue;
        }
        const auto place = static_cast<std::ptrdiff_t>(i);
        processes_.erase(processes_.begin() + place);
        Turn over = std::move(turn);
        turns_.erase(turns_.begin() + place);
        finish(over, over.end ? *std::move(over.end)
                              : endedFromOutside(over.sending, over.arrived, "its process ended"));
    }
}

void FleetRun::take(Turn& turn, std::string_view line) {
    PrintedLine printed = readPrintedLine(line);
    if (printed.end)
        turn.end = std::move(printed.end);
    else if (printed.state)
        note(turn, *std::move(printed.state));
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
    const FleetTask& task = tasks_[turn.task];
    state.name = task.name;
    state.address = task.address;
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
    output_.show(result, turn.of);
}

void FleetRun::endAll() {
    processes_.clear();
    for (Turn& turn : std::exchange(turns_, {}))
        finish(turn,
               turn.end ? *std::move(turn.end) : endedFromOutside(turn.sending, turn.arrived, "interrupted"));
    for (; next_ < tasks_.size(); ++next_) {
        Turn turn;
        turn.task = next_;
        turn.began = Clock::now();
        finish(turn, failedTransfer("interrupted before its turn"));
    }
}

} // namespace orvista::console
