#pragma once

#include <functional>
#include <stdexcept>

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvista::testing {

/// Runs `act` in a child process that has given up root, since root is refused nothing. Returns true when
/// `act` returned true.
inline bool holdsUnprivileged(const std::function<bool()>& act) {
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("no child process");
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        const bool dropped = geteuid() != 0 || (setgid(nobody) == 0 && setuid(nobody) == 0);
        bool held = false;
        try {
            held = dropped && act();
        } catch (...) {
            held = false;
        }
        _exit(held ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace orvista::testing
