#include "bench/Pair.h"
#include "check/ProjectCheck.h"
#include "script/ScriptInterpreter.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

/// Checking all 60 messages of a project, each of 64 KB, beside the floor: interpreting the same scripts, as
/// any check must.
namespace orvista::bench {
namespace {

constexpr std::size_t messageLength = 64 * 1024;

std::string repeated(const std::string& text, std::size_t length) {
    std::string all;
    while (all.size() + text.size() <= length)
        all += text;
    return all;
}

const std::string page =
    "CLEAR\r\nTEXT 0 0 RED BLACK \"Level        m\"\r\nDISPVAR 48 0 GREEN BLACK RegVar1\r\n"
    "IN GO-LEFT 1 50\r\nACT STILL 3000\r\nOUT GO-LEFT 1 50\r\n";

std::string pages(std::size_t length) {
    return repeated(page, length);
}

// What makes a checker work, as long as asked for.

std::string fieldsOverTexts(std::size_t length) {
    std::string all = "CLEAR\r\n" +
                      repeated("TEXT 0 0 RED BLACK \"" + std::string(200, '.') + "\"\r\n", 2500) +
                      repeated("DISPVARS 0 0 RED BLACK RegVar1\r\n", 1400);
    return repeated(all, length);
}

std::string fieldsOnFields(std::size_t length) {
    return repeated("DISPVARS 0 0 RED BLACK RegVar1\r\n", length);
}

std::string fieldsApart(std::size_t length) {
    std::string all = "CLEAR\r\n";
    for (int i = 0; i < 150; ++i)
        all += "TIMES " + std::to_string(i * 60) + " 5 RED BLACK \r\n";
    return repeated(all, length);
}

std::string stepsWithoutEnd(std::size_t length) {
    std::string all = "CLEAR\r\n" + repeated("TEXT 900 20 RED BLACK \"a\"\r\n", 2000);
    for (int i = 1; i < 100; ++i)
        all += "IN GO-RIGHT " + std::to_string(i) + " 1\r\n";
    return repeated(all, length);
}

std::string textBeyondThePanel(std::size_t length) {
    return "TEXT 0 20 RED BLACK \"" + std::string(length - 40, 'x') + "\"\r\nACT STILL 0";
}

std::string rubbish(std::size_t length) {
    return repeated("x\r\n", length);
}

Project projectOf(const std::string& script) {
    Project project;
    project.STDMSG.fill(script);
    project.ALTMSG.fill(script);
    return project;
}

void interpretAll(const Project& project) {
    for (const std::string& script : project.STDMSG)
        benchmark::DoNotOptimize(interpretScript(script));
    for (const std::string& script : project.ALTMSG)
        benchmark::DoNotOptimize(interpretScript(script));
}

void checkSixtyMessages(benchmark::State& state, std::string (*script)(std::size_t)) {
    const Project project = projectOf(script(messageLength));
    const NoBitmaps noBitmaps;
    runBesideFloor(
        state, [&] { benchmark::DoNotOptimize(checkProject(project, noBitmaps, 128)); },
        [&] { interpretAll(project); });
}

/// Checks 16 times the text beside the text: the counter "ratio" is at most 17.6 where the cost is linear.
void checkLongerMessages(benchmark::State& state, std::string (*script)(std::size_t)) {
    constexpr std::size_t times = 16;
    const std::string text = script(messageLength / times);
    const Project shorter = projectOf(text);
    const Project longer = projectOf(script(times * text.size())); // whole repetitions
    const NoBitmaps noBitmaps;
    runBesideFloor(
        state, [&] { benchmark::DoNotOptimize(checkProject(longer, noBitmaps, 128)); },
        [&] { benchmark::DoNotOptimize(checkProject(shorter, noBitmaps, 128)); });
}

#define CHECK_BENCHMARKS(script)                                                                             \
    BENCHMARK_CAPTURE(checkSixtyMessages, script, script)->UseManualTime()->Unit(benchmark::kMillisecond);   \
    BENCHMARK_CAPTURE(checkLongerMessages, script, script)->UseManualTime()->Unit(benchmark::kMillisecond)
CHECK_BENCHMARKS(pages);
CHECK_BENCHMARKS(fieldsOverTexts);
CHECK_BENCHMARKS(fieldsOnFields);
CHECK_BENCHMARKS(fieldsApart);
CHECK_BENCHMARKS(stepsWithoutEnd);
CHECK_BENCHMARKS(textBeyondThePanel);
CHECK_BENCHMARKS(rubbish);

/// One message of 60 has changed.
void checkAgain(benchmark::State& state) {
    Project project = projectOf(pages(messageLength));
    const NoBitmaps noBitmaps;
    ProjectCheck check;
    check.check(project, noBitmaps, 128);
    runBesideFloor(
        state,
        [&] {
            project.STDMSG[3] += "x";
            benchmark::DoNotOptimize(check.check(project, noBitmaps, 128));
        },
        [&] { benchmark::DoNotOptimize(interpretScript(project.STDMSG[3])); });
}
BENCHMARK(checkAgain)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista::bench
