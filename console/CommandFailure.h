#pragma once

#include <stdexcept>

namespace orvista::console {

/// How a command ended, as its caller sees it.
enum class ExitStatus {
    Well = 0,
    Found = 1,   ///< something found, different or failed
    Unusable = 2 ///< wrong usage or unreadable input
};

/// Ends a command; `what()` is the line that says why.
class CommandFailure : public std::runtime_error {
public:
    CommandFailure(ExitStatus status, const std::string& text) : std::runtime_error(text), status_(status) {}
    ExitStatus status() const { return status_; }

private:
    ExitStatus status_;
};

} // namespace orvista::console
