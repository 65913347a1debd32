#include "bench/Pair.h"
#include "display/FirstSight.h"
#include "display/PanelDrawing.h"
#include "sheets/BookHtml.h"

#include <stdexcept>
#include <string>

/// The message book.
namespace orvista::bench {
namespace {

std::string pageScript(std::size_t number) {
    return "CLEAR\r\nTEXT 0 0 RED BLACK \"Tank " + std::to_string(number) +
           ":        m\"\r\nDISPVAR 72 0 GREEN BLACK RegVar" + std::to_string(1 + number % 64) +
           "\r\nIN GO-LEFT 2 25\r\nACT STILL 2000\r\nOUT GO-LEFT 2 25\r\n";
}

/// Sixty messages of four pages each as HTML, beside drawing their LEDs and a picture of each.
void sixtyMessages(benchmark::State& state) {
    Project project;
    for (const Item message : allMessages())
        for (std::size_t page = 0; page < 4; ++page)
            scriptOf(project, message) += pageScript(4 * messagePosition(message) + page);
    const AddressHead head{"0123456789ab", "2026-11-22T03:15:07Z", "", "1.03-2"};
    runBesideFloor(
        state,
        [&] {
            const std::string html = bookHtml(messageBook(project, {}, NoBitmaps(), {}), project, head);
            if (html.size() > 1'500'000)
                throw std::logic_error("the book is large");
            state.counters["bytes"] = static_cast<double>(html.size());
        },
        [&] {
            const PanelDrawing drawing({PanelSize::usualColumns}, bookScale);
            for (std::size_t page = 0; page < 4 * messageCount; ++page)
                benchmark::DoNotOptimize(
                    drawing
                        .draw(firstSight(pageScript(page), {PanelSize::usualColumns}, fieldFormats(project),
                                         defaultValues(project), NoBitmaps()))
                        .pixels.data());
        });
}
BENCHMARK(sixtyMessages)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista::bench
