#pragma once

#include "items/AcceptanceCopy.h"
#include "link/AcceptanceRun.h"
#include "link/DisplayWrites.h"
#include "link/ModbusConnection.h"
#include "model/Project.h"

#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace orvista::testing {

inline AcceptanceRun::Time runTime() {
    return std::chrono::duration_cast<AcceptanceRun::Time>(
        std::chrono::steady_clock::now().time_since_epoch());
}

/// Carries a run out on a display until it is over. \param whenIdle what is wanted then
inline void carryOut(AcceptanceRun& run, const DisplayAddress& display,
                     const std::function<void()>& whenIdle) {
    std::optional<ModbusConnection> connection;
    while (!run.isOver()) {
        const auto frame = run.next(runTime());
        if (!frame) {
            if (run.state() == AcceptanceRun::State::Waiting)
                whenIdle();
            else
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            continue;
        }
        try {
            if (!connection)
                connection.emplace(display);
            run.answered(connection->ask(*frame), runTime());
        } catch (const DisplayFailure& failure) {
            connection.reset();
            run.failed(AcceptanceRun::Failure::Lost, failure.what(), runTime());
        }
    }
}

/// Does what somebody does who is offered it. \throws std::runtime_error where something is left
inline void putBackCopy(const DisplayAddress& display, const std::string& bytes) {
    const auto cutOff = readAcceptanceCopy(bytes);
    if (!cutOff)
        throw std::runtime_error("the copy is not whole");
    AcceptanceRun run(cutOff->before, cutOff->written);
    carryOut(run, display, [&run] { run.end(runTime()); });
    if (!run.written().empty())
        throw std::runtime_error("not put back: " + run.reason());
}

inline std::vector<DisplayItem> heldBy(const DisplayAddress& display, const Project& project) {
    std::vector<DisplayItem> items = displayItems(project);
    readFromDisplay(display, items);
    return items;
}

} // namespace orvista::testing
