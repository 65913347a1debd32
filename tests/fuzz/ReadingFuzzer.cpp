#include "tests/fuzz/ReaderRun.h"

#include "console/CommandFailure.h"
#include "console/ValuesOption.h"

/// Any file is the values of a display, or is refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    try {
        const OwnValues values = console::valuesOfReading(testing::inputBytes(data, size), "values.json");
        testing::require(values.floats.empty() || values.floats.rbegin()->first < floatVariableCount);
        testing::require(values.booleans.empty() || values.booleans.rbegin()->first < booleanVariableCount);
    } catch (const console::CommandFailure& failure) {
        testing::require(failure.status() == console::ExitStatus::Unusable);
    }
    return 0;
}
