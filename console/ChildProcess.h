#pragma once

#include "console/Interruption.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace orvista::console {

/// This very program once more. What it writes to standard output is read here, its standard input is written
/// here, its standard error is this program's. It ends with this program, however that ends, and with the
/// object; Ctrl+C does not reach it.
class ChildProcess {
public:
    struct Setting {
        std::string name;
        std::string value; ///< UTF-8
    };

    /// What it does, told in two ways.
    struct Work {
        std::string argument; ///< where it is started again: what its command line says
        int (*run)();         ///< where it is a copy: this, then it ends with what that returns
    };
#ifdef _WIN32
    static constexpr bool isCopy = false;
#else
    /// It has all that this program has loaded, so that it begins in a fraction of the time. There must be no
    /// other threads.
    static constexpr bool isCopy = true;
#endif

    /// This program and the children it starts from now on take their share of the processor without cutting
    /// in on others: programs that people look at, simulated displays that are to answer. Does nothing where
    /// the system knows no such kind of work.
    static void workInBulk();

    /// \param environment added to this program's own
    /// \throws std::system_error
    ChildProcess(const Work& work, std::span<const Setting> environment);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// What the child reads next: no more than a pipe holds. False when the child is gone.
    bool write(std::string_view bytes);
    /// Appends what the child has written by now, without waiting. False when nothing more will come.
    bool read(std::string& bytes);

    /// Returns when one of the children has written or ended, or an interruption came; at the latest after a
    /// short while.
    static void waitForAny(std::span<const std::unique_ptr<ChildProcess>> children,
                           Interruption& interruption);

private:
    struct System;
    std::unique_ptr<System> system_;
};

} // namespace orvista::console
