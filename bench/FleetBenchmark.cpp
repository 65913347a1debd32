#include "bench/Pair.h"
#include "bench/PlainFtp.h"
#include "bench/ProgramRun.h"
#include "items/Master.h"
#include "link/ProjectSnapshot.h"
#include "link/TransferredFiles.h"
#include "sheets/FleetSheet.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <deque>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

/// `orvista upload` to many simulated displays and `orvista compare` with them, beside the same dialogues
/// over plain sockets, as many at once.
namespace orvista::bench {
namespace {

const std::string example = ORVISTA_EXAMPLES "/pumpstation/";
constexpr int jobs = 8;

/// Displays do not get slower because there are more of them; one process that looks after hundreds does.
class Displays {
public:
    static constexpr std::int64_t mostInOneProcess = 50;

    explicit Displays(std::int64_t count) {
        for (std::int64_t first = 0; first < count; first += mostInOneProcess)
            add(first, std::min(mostInOneProcess, count - first));
    }
    /// What they have taken of the processor so far.
    Seconds processor() const {
        Seconds all{};
        for (const testing::ChildProcess& process : processes_) {
            clockid_t clock{};
            timespec time{};
            if (clock_getcpuclockid(process.id(), &clock) != 0 || clock_gettime(clock, &time) != 0)
                throw std::runtime_error("no clock of the displays");
            all += std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
        }
        return all;
    }

    testing::TemporaryFolder folder;
    std::vector<DisplayAddress> addresses;

private:
    void add(std::int64_t first, std::int64_t count) {
        auto& process = processes_.emplace_back(std::vector<std::string>{
            ORVISTA_MANY_DISPLAYS, std::to_string(first), std::to_string(count), folder.path()});
        for (std::int64_t i = 0; i < count; ++i) {
            std::istringstream line(process.readLine());
            DisplayAddress address;
            line >> address.host >> address.port;
            addresses.push_back(address);
        }
    }

    std::deque<testing::ChildProcess> processes_;
};

/// Memory of a process and of those that it started, in MB; what several of them share counts once.
double memoryOf(pid_t process) {
    const std::string folder = "/proc/" + std::to_string(process);
    double megabytes = 0;
    std::ifstream sizes(folder + "/smaps_rollup");
    for (std::string line; std::getline(sizes, line);)
        if (line.starts_with("Pss:"))
            megabytes = std::stod(line.substr(4)) / 1024;
    std::ifstream children(folder + "/task/" + std::to_string(process) + "/children");
    for (pid_t child = 0; children >> child;)
        megabytes += memoryOf(child);
    return megabytes;
}

/// The most that all processes of a run take at once, as seen every few milliseconds.
double mostMemoryOf(const std::vector<std::string>& command) {
    const pid_t process = startProgram(command);
    double most = 0;
    siginfo_t end{};
    while (waitid(P_PID, static_cast<id_t>(process), &end, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           end.si_pid == 0) {
        most = std::max(most, memoryOf(process));
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    finishProgram(process);
    return most;
}

/// What the displays, this program and those it has waited for have taken of the processor so far. Of two
/// ways to talk to the displays it tells the shorter one, however busy the machine is.
Seconds processorOfAll(const Displays& displays) {
    Seconds all = displays.processor();
    for (const int whose : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(whose, &usage);
        for (const timeval& part : {usage.ru_utime, usage.ru_stime})
            all += std::chrono::seconds(part.tv_sec) + std::chrono::microseconds(part.tv_usec);
    }
    return all;
}

/// The median of work to floor, pair by pair.
double ratioOfPairs(const std::vector<Cost>& works, const std::vector<Cost>& floors, Seconds Cost::*part) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < works.size(); ++i)
        ratios.push_back((works[i].*part) / (floors[i].*part));
    std::ranges::nth_element(ratios, ratios.begin() + static_cast<std::ptrdiff_t>(ratios.size() / 2));
    return ratios[ratios.size() / 2];
}

/// Runs and reports as runBesideFloor does, and besides the ratio of each pair, which a machine that is busy
/// for a while disturbs less, and that of what all take of the processor.
template <typename Work, typename Floor>
void runDisplaysBesideFloor(benchmark::State& state, const Displays& displays, Work work, Floor floor) {
    std::vector<Cost> works;
    std::vector<Cost> floors;
    const auto measured = [&displays](auto& run, std::vector<Cost>& costs) {
        return [&] {
            const Seconds before = processorOfAll(displays);
            const Cost cost = costOf(run);
            costs.push_back({cost.wall, processorOfAll(displays) - before});
        };
    };
    runBesideFloor(state, measured(work, works), measured(floor, floors));
    state.counters["pair_ratio"] = ratioOfPairs(works, floors, &Cost::wall);
    state.counters["all_cpu_ratio"] = ratioOfPairs(works, floors, &Cost::processor);
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

/// The same dialogue with each display, as many at once as the command has.
template <typename Dialogue>
void talkPlainly(const std::vector<DisplayAddress>& displays, Dialogue dialogue) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < displays.size(); i = next++) {
            PlainFtp ftp(displays[i]);
            dialogue(ftp);
            ftp.quit();
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < jobs; ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
}

void sendPlainly(const std::vector<DisplayAddress>& displays, const std::vector<SentFile>& files) {
    talkPlainly(displays, [&files](PlainFtp& ftp) {
        ftp.begin();
        for (const SentFile& file : files)
            ftp.store(file.name, file.bytes);
        ftp.finish();
    });
}

void fetchPlainly(const std::vector<DisplayAddress>& displays, const std::vector<SentFile>& files) {
    talkPlainly(displays, [&files](PlainFtp& ftp) {
        ftp.fetch();
        for (const SentFile& file : files)
            if (ftp.fetch(file.name) != file.bytes)
                throw std::runtime_error("other bytes");
    });
}

std::vector<std::string> commandOf(const std::string& name, const Displays& displays) {
    std::vector<FleetDisplay> list;
    for (const DisplayAddress& address : displays.addresses)
        list.push_back({"display " + address.host, address, example + "PUMPSTATION.orx"});
    const std::string path = displays.folder.file("displays.csv");
    testing::writeBytes(path, fleetSheet(list));
    return {ORVISTA_PROGRAM, name, "--list", path, "--jobs", std::to_string(jobs), "--json"};
}

/// The ratio to the floor may be 1.3; all processes together may take 100 MB. 500 displays may take ten times
/// as long as 50.
void UploadToMany(benchmark::State& state) {
    const Displays displays(state.range(0));
    const std::vector<SentFile> files = exampleFiles();
    const std::vector<std::string> command = commandOf("upload", displays);
    runDisplaysBesideFloor(
        state, displays, [&] { finishProgram(startProgram(command)); },
        [&] { sendPlainly(displays.addresses, files); });
    state.counters["all_MB"] = mostMemoryOf(command); // looking takes time
}
BENCHMARK(UploadToMany)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(50)->Iterations(21);
BENCHMARK(UploadToMany)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(500)->Iterations(3);

/// The same limits.
void CompareMany(benchmark::State& state) {
    const Displays displays(state.range(0));
    const std::vector<SentFile> files = exampleFiles();
    sendPlainly(displays.addresses, files);
    const std::vector<std::string> command = commandOf("compare", displays);
    runDisplaysBesideFloor(
        state, displays, [&] { finishProgram(startProgram(command)); },
        [&] { fetchPlainly(displays.addresses, files); });
    state.counters["all_MB"] = mostMemoryOf(command);
}
BENCHMARK(CompareMany)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(50)->Iterations(21);
BENCHMARK(CompareMany)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(500)->Iterations(3);

/// Sixty messages with places.
Project masterProject() {
    Project project;
    project.ProjPath = example;
    project.ProjName = "PLANT";
    std::size_t number = 0;
    for (const Item message : allMessages())
        scriptOf(project, message) = "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Line {line:3>} {tank:8}\"\r\n"
                                     "TEXTS 0 8 RED BLACK \"" +
                                     std::to_string(++number) + " above {limit:6}\"\r\nACT STILL 3000";
    return project;
}

std::vector<FleetDisplay> displaysWithValues(const std::vector<DisplayAddress>& addresses) {
    const auto heads =
        std::make_shared<const ListedValues::Names>(ListedValues::Names{"line", "tank", "limit"});
    std::vector<FleetDisplay> displays;
    for (const DisplayAddress& address : addresses) {
        const std::string number = std::to_string(displays.size() % 1000);
        displays.push_back({"display " + number,
                            address,
                            {},
                            {},
                            ListedValues(heads, {number, "Tank " + number, number + ".5"})});
    }
    return displays;
}

/// Of a project in a folder of its own, whose notes make it a master or not.
std::vector<std::string> masterCommand(const Displays& displays, const std::string& folder, bool isMaster) {
    std::filesystem::create_directory(displays.folder.file(folder));
    const std::string project = writeSnapshot(masterProject(), displays.folder.file(folder));
    const std::string list = displays.folder.file(folder) + "/displays.csv";
    testing::writeBytes(list, fleetSheet(displaysWithValues(displays.addresses)));
    if (isMaster)
        testing::writeBytes(displays.folder.file(folder) + "/PLANT.notes.json",
                            R"({"version":1,"master":{"list":"displays.csv"}})");
    return {ORVISTA_PROGRAM, "upload", project, "--list", list, "--jobs", std::to_string(jobs), "--json"};
}

/// With values, beside the same project without: all_cpu_ratio may be 1.1.
void UploadMasterToMany(benchmark::State& state) {
    const Displays displays(state.range(0));
    const std::vector<std::string> master = masterCommand(displays, "master", true);
    const std::vector<std::string> plain = masterCommand(displays, "plain", false);
    runDisplaysBesideFloor(
        state, displays, [&] { finishProgram(startProgram(master)); },
        [&] { finishProgram(startProgram(plain)); });
}
BENCHMARK(UploadMasterToMany)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(500)->Iterations(3);

/// 500 displays of 60 messages: half a second of processor time at most.
void ExpandMany(benchmark::State& state) {
    const Master master(masterProject());
    const auto displays =
        displaysWithValues(std::vector<DisplayAddress>(static_cast<std::size_t>(state.range(0))));
    for ([[maybe_unused]] auto turn : state)
        for (const FleetDisplay& display : displays)
            benchmark::DoNotOptimize(master.expand(display));
}
BENCHMARK(ExpandMany)->Unit(benchmark::kMillisecond)->Arg(500);

} // namespace
} // namespace orvista::bench
