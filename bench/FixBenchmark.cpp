#include "bench/Pair.h"
#include "check/FixRun.h"
#include "check/ProjectCheck.h"
#include "display/BitmapProvider.h"
#include "display/FolderBitmaps.h"
#include "model/Item.h"
#include "model/NoMessages.h"
#include "model/ProjectFile.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

/// Mending beside the floor: checking the same messages once before and once after each fix, as no trial can
/// do without.
namespace orvista::bench {
namespace {

const NoBitmaps noBitmaps;
constexpr int columns = 128;
const std::string clean = "CLEAR\r\nTEXT 0 0 RED BLACK \"Level        m\"\r\n"
                          "DISPVAR 48 0 GREEN BLACK RegVar1\r\nACT STILL 3000\r\n";
const std::string wrong = "CLEAR\r\nTEXT 0 0 RED BLACK \"Level   m\"\r\n"
                          "DISPVAR 48 0 GREEN BLACK RegVar1\r\nACT STILL 3000\r\n";

/// A message of 64 KB.
std::string longScript(const std::string& last) {
    constexpr std::size_t length = std::size_t{64} * 1024;
    std::string script;
    while (script.size() + clean.size() + last.size() <= length)
        script += clean;
    return script + last;
}

bool alwaysOn(std::size_t /*mended*/) {
    return true;
}

void checkTimes(const Project& project, Item message, std::size_t times) {
    for (std::size_t i = 0; i < times; ++i)
        benchmark::DoNotOptimize(
            checkMessage(message, scriptOf(project, message), project, noBitmaps, columns));
}

/// What the context menu does on a finding.
void fixesOfOneFinding(benchmark::State& state) {
    const Item message{Kind::Regular, 0};
    Project project;
    project.STDMSG[0] = longScript(wrong);
    runBesideFloor(
        state,
        [&] {
            Fixing fixing(project, noBitmaps, columns);
            benchmark::DoNotOptimize(fixing.fixesOf(Finding(fixing.findingsOf(message).at(0))));
        },
        [&] { checkTimes(project, message, 2); });
}
BENCHMARK(fixesOfOneFinding)->UseManualTime()->Unit(benchmark::kMillisecond);

/// All of a project with a thousand findings, beside a check of each of their pages before and after.
void mendAllOf(benchmark::State& state, const Project& project) {
    runBesideFloor(
        state,
        [&] {
            Fixing fixing(project, noBitmaps, columns);
            if (mendAll(fixing, {}, alwaysOn).size() != 1000)
                state.SkipWithError("not all of them were mended");
        },
        [&] {
            Project page;
            page.STDMSG[0] = wrong;
            checkTimes(page, {Kind::Regular, 0}, 2000);
        });
}

std::string wrongTimes(int times) {
    std::string script;
    for (int i = 0; i < times; ++i)
        script += wrong;
    return script;
}

/// In messages of a usual length.
void mendAThousand(benchmark::State& state) {
    Project project;
    project.STDMSG.fill(wrongTimes(25));
    mendAllOf(state, project);
}
BENCHMARK(mendAThousand)->UseManualTime()->Unit(benchmark::kMillisecond);

/// In one message of 64 KB and more.
void mendAThousandInOneMessage(benchmark::State& state) {
    Project project;
    project.STDMSG[0] = wrongTimes(1000);
    mendAllOf(state, project);
}
BENCHMARK(mendAThousandInOneMessage)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2);

/// All of the example with a finding in each of its messages, beside checking it once before and once after.
void mendTheExample(benchmark::State& state) {
    Project project;
    NoMessages silent;
    DocMgrModule::readProjectWithoutWriting(ORVISTA_EXAMPLES "/pumpstation/PUMPSTATION.orx", project,
                                            {PathRules::native(), silent});
    const FolderBitmaps bitmaps(project.ProjPath);
    for (const Item message : allMessages())
        scriptOf(project, message) += "\r\n" + wrong;
    runBesideFloor(
        state,
        [&] {
            Fixing fixing(project, bitmaps, columns);
            if (mendEverything(fixing, alwaysOn).size() != messageCount)
                state.SkipWithError("not all of them were mended");
        },
        [&] {
            for (int i = 0; i < 2; ++i)
                benchmark::DoNotOptimize(checkProject(project, bitmaps, columns));
        });
}
BENCHMARK(mendTheExample)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista::bench
