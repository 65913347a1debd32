#pragma once

#include <functional>
#include <vector>

namespace orvista {

/// Knows whether a transfer is running. What would interrupt it, such as a message box, waits here for its
/// end.
class RunningTransfer {
public:
    /// Runs `transfer`, then what came to wait meanwhile, in order; also where the transfer throws.
    void during(const std::function<void()>& transfer);
    /// Does `work` at once where no transfer is running, else right after the one that is. What `work` refers
    /// to must last until then.
    void afterwards(std::function<void()> work);

private:
    void end();

    bool running_ = false;
    std::vector<std::function<void()>> waiting_;
};

} // namespace orvista
