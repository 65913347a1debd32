#include "tests/fuzz/ReaderRun.h"

#include "model/JsonReader.h"
#include "model/JsonText.h"
#include "model/Utf8.h"

namespace orvista {
namespace {

/// Any bytes can be written as a text, and come back as they are where they are UTF-8.
void tryAsJsonText(std::string_view bytes) {
    const JsonReading reading = readJson(jsonLine(bytes));
    testing::require(reading.fault.empty() && reading.value.text() != nullptr);
    testing::require((*reading.value.text() == bytes) == isUtf8(bytes));
}

} // namespace
} // namespace orvista

/// What is JSON is the same when it was written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const auto input = testing::inputBytes(data, size);
    tryAsJsonText(input);
    const JsonReading reading = readJson(input);
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
