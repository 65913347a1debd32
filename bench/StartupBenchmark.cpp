#include "bench/Pair.h"
#include "tests/support/TemporaryFolder.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>

/// From the start of the process to the first painted main window, beside the same window in straight code.
namespace orvista::bench {
namespace {

void runToItsEnd(std::string program, std::string argument) {
    const std::array<char*, 3> arguments{program.data(), argument.data(), nullptr};
    pid_t process = 0;
    int status = 0;
    if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(process, &status, 0) != process || status != 0)
        throw std::runtime_error(program + " failed");
}

void StartUp(benchmark::State& state) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const testing::TemporaryFolder programFolder;
    runBesideFloor(
        state, [&] { runToItsEnd(ORVISTA_EDITOR_START, programFolder.path()); },
        [&] { runToItsEnd(ORVISTA_PLAIN_START, programFolder.path()); });
}

BENCHMARK(StartUp)->UseManualTime()->MinTime(3)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista::bench
