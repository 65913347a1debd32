#include "tests/fuzz/ReaderRun.h"

#include "sheets/Template.h"

#include <string>

/// Any bytes are a template: it is filled, or the line that is wrong is named.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    static const TemplateValues values{
        {{"a", "text"}, {"none", ""}},
        {{"rows", {{{"x", "1"}, {"y", ""}}, {{"x", "2"}, {"y", "z"}}}}, {"empty", {}}},
        {"x", "y"}};
    const std::string_view source = testing::inputBytes(data, size);
    try {
        const std::string filled = filledTemplate(source, values);
        testing::require(filled.size() <= mostFilledBytes);
        testing::require(source.find("{{") != std::string_view::npos || filled == source);
    } catch (const TemplateFault& fault) {
        testing::require(std::string_view(fault.what()).starts_with("line ") || size > mostTemplateBytes ||
                         std::string_view(fault.what()).starts_with("what it makes"));
    }
    return 0;
}
