#include "bench/ProgramRun.h"
#include "model/Item.h"
#include "sheets/MessageSheet.h"

#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>
#include <vector>

/// The command line beside a program that only reads the same files; tables as they grow.
namespace orvista::bench {
namespace {

const std::string example = ORVISTA_EXAMPLES "/pumpstation/";

/// Processor time of a program from its start to its end, in milliseconds.
double processorTime(const std::vector<std::string>& command) {
    const rusage usage = finishProgram(startProgram(command));
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

/// Beyond the floor it may take 5 ms.
void Command(benchmark::State& state, const char* name, const std::vector<std::string>& files) {
    std::vector<std::string> floor{ORVISTA_READ_FILES, example + "PUMPSTATION.orx"};
    floor.insert(floor.end(), files.begin(), files.end());
    double ours = 0;
    double least = 0;
    for (auto run : state) {
        const double time = processorTime({ORVISTA_PROGRAM, name, example + "PUMPSTATION.orx"});
        ours += time;
        least += processorTime(floor);
        state.SetIterationTime(time / 1000);
    }
    const auto runs = static_cast<double>(state.iterations());
    state.counters["ours_ms"] = ours / runs;
    state.counters["floor_ms"] = least / runs;
    state.counters["beyond_ms"] = (ours - least) / runs;
}

BENCHMARK_CAPTURE(Command, addresses, "addresses", std::vector<std::string>{})
    ->UseManualTime()
    ->Iterations(200);
BENCHMARK_CAPTURE(Command, check, "check",
                  std::vector<std::string>{example + "pump.bmp", example + "alarm.bmp"})
    ->UseManualTime()
    ->Iterations(200);

/// A project whose messages make a table of about that many bytes.
Project projectOf(std::size_t bytes) {
    Project project;
    const std::string page =
        "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Level       m\"\r\nDISPVAR 48 0 ORANGE BLACK RegVar1\r\n"
        "IN GO-LEFT 1 50\r\nACT STILL 4000\r\nOUT GO-LEFT 1 50\r\n";
    for (const Item message : allMessages()) {
        std::string& script = scriptOf(project, message);
        script.clear();
        while (script.size() < bytes / messageCount)
            script += page;
    }
    return project;
}

void Export(benchmark::State& state, MessageSheetForm form) {
    const Project project = projectOf(static_cast<std::size_t>(state.range(0)));
    std::size_t bytes = 0;
    for (auto run : state)
        bytes = messageSheet(project, form).csv.size();
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void Import(benchmark::State& state, MessageSheetForm form) {
    const std::string csv = messageSheet(projectOf(static_cast<std::size_t>(state.range(0))), form).csv;
    for (auto run : state)
        if (importMessages(csv, Project()).changes.size() != messageCount)
            throw std::runtime_error("the table was not taken");
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(csv.size()) * state.iterations());
}

constexpr std::int64_t smallest = 600'000;
constexpr std::int64_t largest = 9'600'000;

BENCHMARK_CAPTURE(Export, scripts, MessageSheetForm::Scripts)
    ->Range(smallest, largest)
    ->RangeMultiplier(4)
    ->Complexity();
BENCHMARK_CAPTURE(Import, scripts, MessageSheetForm::Scripts)
    ->Range(smallest, largest)
    ->RangeMultiplier(4)
    ->Complexity();
BENCHMARK_CAPTURE(Export, pages, MessageSheetForm::Pages)
    ->Range(smallest, largest)
    ->RangeMultiplier(4)
    ->Complexity();
BENCHMARK_CAPTURE(Import, pages, MessageSheetForm::Pages)
    ->Range(smallest, largest)
    ->RangeMultiplier(4)
    ->Complexity();

} // namespace
} // namespace orvista::bench
