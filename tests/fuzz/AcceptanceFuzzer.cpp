#include "tests/fuzz/ReaderRun.h"

#include "items/AcceptanceFile.h"

/// Any bytes are the file of an acceptance.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const AcceptanceReading reading = readAcceptance(testing::inputBytes(data, size));
    testing::require(reading.acceptance.has_value() == reading.fault.empty());
    if (!reading.acceptance)
        return 0;
    testing::require(readAcceptance(acceptanceBytes(*reading.acceptance)).acceptance == reading.acceptance);
    return 0;
}
