#include "bench/Pair.h"
#include "bench/PlainFtp.h"
#include "exchange/FleetSheet.h"
#include "link/TransferredFiles.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

/// `orvista upload` to many simulated displays, beside the same dialogues over plain sockets, as many at
/// once.
namespace orvista::bench {
namespace {

const std::string example = ORVISTA_EXAMPLES "/pumpstation/";
constexpr int jobs = 8;

struct Displays {
    explicit Displays(std::int64_t count)
        : process({ORVISTA_MANY_DISPLAYS, std::to_string(count), folder.path()}) {
        for (std::int64_t i = 0; i < count; ++i)
            ports.push_back(static_cast<std::uint16_t>(std::stoi(process.readLine())));
    }
    testing::TemporaryFolder folder;
    testing::ChildProcess process;
    std::vector<std::uint16_t> ports;
};

/// Runs the program to its end. \returns the size of the largest of its processes, in MB
double run(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (std::string& word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    int status = 0;
    rusage usage{};
    const bool isWell =
        posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ) == 0 &&
        wait4(process, &status, 0, &usage) == process && status == 0;
    posix_spawn_file_actions_destroy(&actions);
    if (!isWell)
        throw std::runtime_error(command[0] + " failed");
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

struct SentFile {
    std::string name;
    std::string bytes;
};

std::vector<SentFile> exampleFiles() {
    std::vector<SentFile> files;
    for (const std::string_view name : transferredDeviceFiles)
        files.push_back({std::string(name), testing::fileBytes(example + std::string(name))});
    for (const std::string& name : bitmapsOfFolder(example))
        files.push_back({name, testing::fileBytes(example + name)});
    return files;
}

void sendPlainly(const std::vector<std::uint16_t>& ports, const std::vector<SentFile>& files) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < ports.size(); i = next++) {
            PlainFtp ftp(ports[i]);
            for (const SentFile& file : files)
                ftp.store(file.name, file.bytes);
            ftp.finish();
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < jobs; ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
}

/// The ratio to the floor may be 1.5; all processes together may take 100 MB.
void UploadToMany(benchmark::State& state) {
    const Displays displays(state.range(0));
    std::vector<FleetDisplay> list;
    for (const std::uint16_t port : displays.ports)
        list.push_back({"display " + std::to_string(port), {"127.0.0.1", port}, example + "PUMPSTATION.orx"});
    const std::string path = displays.folder.file("displays.csv");
    testing::writeBytes(path, fleetSheet(list));
    const std::vector<SentFile> files = exampleFiles();
    double largest = 0;
    runBesideFloor(
        state,
        [&] {
            largest = std::max(largest, run({ORVISTA_PROGRAM, "upload", "--list", path, "--jobs",
                                             std::to_string(jobs), "--json"}));
        },
        [&] { sendPlainly(displays.ports, files); });
    state.counters["largest_process_MB"] = largest;
    state.counters["all_MB_at_most"] = largest * (jobs + 1);
}
BENCHMARK(UploadToMany)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(50)->Iterations(10);
BENCHMARK(UploadToMany)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(500)->Iterations(2);

} // namespace
} // namespace orvista::bench
