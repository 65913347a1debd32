#include "tests/fuzz/ReaderRun.h"

#include "model/JsonReader.h"
#include "model/JsonText.h"

/// What is JSON is the same when it was written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const JsonReading reading = readJson(testing::inputBytes(data, size));
    if (!reading.fault.empty()) {
        testing::require(reading.value.isNull() && reading.doubledKeys.empty());
        return 0;
    }
    const std::string bytes = jsonText(reading.value);
    const JsonReading again = readJson(bytes);
    testing::require(again.fault.empty() && again.doubledKeys.empty() && again.value == reading.value);
    testing::require(jsonText(again.value) == bytes);
    return 0;
}
