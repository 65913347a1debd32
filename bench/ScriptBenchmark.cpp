#include "bench/Pair.h"

#include "script/MessagePage.h"
#include "script/PlaceholderScan.h"

#include <cstring>
#include <string>
#include <vector>

/// The scan runs at every keystroke, so its cost and the page's are shown beside their floor: a copy of the
/// same text. The argument is the text's length in bytes; a turn repeats short texts until the clock can
/// tell them apart.
namespace orvista {
namespace {

constexpr std::int64_t shortest = 16;
constexpr std::int64_t longest = 1 << 20;
constexpr std::int64_t bytesInATurn = 1 << 16;

using MakeText = std::string (*)(std::size_t length);

std::string repeatedTo(std::size_t length, const std::string& piece) {
    std::string text;
    while (text.size() < length)
        text += piece;
    text.resize(length);
    return text;
}

std::string ordinary(std::size_t length) {
    return repeatedTo(length, "Level in tank 3: 50 m ");
}
std::string fourFields(std::size_t length) {
    return repeatedTo(length, "abc ").replace(0, 11, "%4v%v%2v%5v");
}
std::string percents(std::size_t length) {
    return repeatedTo(length, "%");
}
std::string percentsAndV(std::size_t length) {
    return repeatedTo(length - 1, "%").append("v");
}
std::string digits(std::size_t length) {
    return std::string("%").append(length - 1, '7');
}
std::string cutDigits(std::size_t length) {
    return repeatedTo(length, "%1234567890");
}
std::string surplus(std::size_t length) {
    return repeatedTo(length, "%3v");
}

template <typename Work>
void runBesideCopy(benchmark::State& state, const std::string& text, Work&& work) {
    const std::int64_t repeats = std::max<std::int64_t>(1, bytesInATurn / state.range(0));
    std::vector<char> copy(text.size());
    const auto repeated = [repeats](auto&& once) {
        for (std::int64_t i = 0; i < repeats; ++i)
            once();
    };
    const auto copyOnce = [&] {
        std::memcpy(copy.data(), text.data(), text.size());
        benchmark::DoNotOptimize(copy.data());
        benchmark::ClobberMemory();
    };
    bench::runBesideFloor(
        state, [&] { repeated(work); }, [&] { repeated(copyOnce); });
}

void scanText(benchmark::State& state, MakeText make) {
    const std::string text = make(static_cast<std::size_t>(state.range(0)));
    runBesideCopy(state, text, [&text] { benchmark::DoNotOptimize(scanPlaceholders(text)); });
}

void generatePage(benchmark::State& state, MakeText make) {
    MessageForm form;
    form.txtText = make(static_cast<std::size_t>(state.range(0)));
    runBesideCopy(state, form.txtText,
                  [&form] { benchmark::DoNotOptimize(BuildPartialScript(form, PathRules::native())); });
}

#define ORVISTA_TEXT_BENCHMARK(make)                                                                         \
    BENCHMARK_CAPTURE(scanText, make, make)                                                                  \
        ->RangeMultiplier(256)                                                                               \
        ->Range(shortest, longest)                                                                           \
        ->UseManualTime();                                                                                   \
    BENCHMARK_CAPTURE(generatePage, make, make)                                                              \
        ->RangeMultiplier(256)                                                                               \
        ->Range(shortest, longest)                                                                           \
        ->UseManualTime()

ORVISTA_TEXT_BENCHMARK(ordinary);
ORVISTA_TEXT_BENCHMARK(fourFields);
ORVISTA_TEXT_BENCHMARK(percents);
ORVISTA_TEXT_BENCHMARK(percentsAndV);
ORVISTA_TEXT_BENCHMARK(digits);
ORVISTA_TEXT_BENCHMARK(cutDigits);
ORVISTA_TEXT_BENCHMARK(surplus);

} // namespace
} // namespace orvista
