#include "link/RunningTransfer.h"

#include <utility>

namespace orvista {

void RunningTransfer::during(const std::function<void()>& transfer) {
    running_ = true;
    try {
        transfer();
    } catch (...) {
        end();
        throw;
    }
    end();
}

void RunningTransfer::afterwards(std::function<void()> work) {
    if (running_)
        waiting_.push_back(std::move(work));
    else
        work();
}

void RunningTransfer::end() {
    running_ = false;
    // The work may open boxes, under which the next transfer's work could come to wait.
    for (const auto& work : std::exchange(waiting_, {}))
        work();
}

} // namespace orvista
