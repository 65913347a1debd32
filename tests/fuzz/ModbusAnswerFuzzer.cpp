#include "link/ModbusAnswers.h"
#include "link/ModbusReader.h"
#include "tests/fuzz/ReaderRun.h"

/// The input is what a display sends instead of an answer, byte after byte: it is waited for, refused with a
/// reason, or taken for exactly what was asked.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    using testing::require;
    const std::span<const std::uint8_t> received(data, size);
    const Project project;
    std::vector<DisplayItem> items = displayItems(project);
    for (const ReadStep& step : readSteps(items)) {
        try {
            for (std::size_t count = 0; count < std::min<std::size_t>(size, 16); ++count)
                answerData(step.request, received.first(count));
            if (const auto answer = answerData(step.request, received))
                takeAnswer(step, *answer, items);
        } catch (const BadAnswer& bad) {
            require(std::string_view(bad.what()).starts_with(requestInWords(step.request) + ": "));
        }
    }
    for (const DisplayItem& item : items)
        require(item.isFloat() || item.raw[0] <= 1);
    for (const Frame& request : {coilRequest(322, true), registerPairRequest(100, 1.5F)}) {
        try {
            const auto confirmed = answerData(request, received);
            require(!confirmed || (confirmed->empty() && size == 12));
        } catch (const BadAnswer&) {
        }
    }
    return 0;
}
