#include "tests/fuzz/ReaderRun.h"

#include <cmath>

/// Any text reads as a finite number or overflows; what is written of it reads back as the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    for (const InnerBlanks blanks : {InnerBlanks::EndNumber, InnerBlanks::Skipped}) {
        try {
            const double value = leadingNumber(testing::inputBytes(data, size), blanks);
            testing::require(std::isfinite(value));
            const std::string text = shortestDecimalText(value);
            testing::require(text.find_first_not_of("-.0123456789") == std::string::npos);
            testing::require(leadingNumber(text) == value);
            toWhole<std::int32_t>(value);
        } catch (const Overflow&) {
        }
    }
    return 0;
}
