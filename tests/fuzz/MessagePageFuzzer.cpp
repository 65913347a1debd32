#include "tests/fuzz/ReaderRun.h"
#include "tests/support/ReferenceScan.h"

#include "model/Windows1252.h"
#include "script/MessagePage.h"

namespace {

using namespace orvista;

/// The first twelve bytes choose from the lists, the rest is the content.
constexpr std::size_t choiceBytes = 12;

MessageForm formOf(std::string_view input) {
    const auto choice = [&input](std::size_t at, std::size_t bound) {
        return at < input.size() ? static_cast<unsigned char>(input[at]) % bound : 0;
    };
    MessageForm form;
    form.bitmap = choice(0, 4) == 0;
    form.cbFont = choice(1, 2);
    form.cbFgClr = choice(2, 4);
    form.cbBgClr = choice(3, 4);
    for (std::size_t slot = 0; slot < form.fields.size(); ++slot)
        form.fields[slot] = {choice(4 + slot, 98), choice(4 + slot, 4), choice(5, 4)};
    form.cbInEffect = choice(8, 6);
    form.cbIFSpeed = form.cbOFSpeed = choice(9, 3);
    form.cbSpEffect = choice(10, 2);
    form.cbDelay = choice(10, 10);
    form.cbOutEffect = choice(11, 6);
    form.txtText = input.substr(std::min(choiceBytes, input.size()));
    form.txtPath = form.txtText;
    return form;
}

void checkScan(const PlaceholderScan& scan, const std::string& text) {
    testing::require(scan == testing::referenceScan(text));
    for (std::size_t slot = 0; slot < scan.fieldCount(); ++slot)
        testing::require(scan.DisplayText.at(static_cast<std::size_t>(scan.VarPos[slot])) == ' ');
}

} // namespace

/// Any bytes are a content: the scan does what the step-by-step scan does, and the page holds the content as
/// it stands between its first lines and its effects.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MessageForm form = formOf(testing::inputBytes(data, size));
    const PlaceholderScan scan = scanPlaceholders(form.txtText);
    checkScan(scan, form.txtText);

    for (const PathRules& paths : {PathRules::posix(), PathRules::windows()}) {
        const std::string page = BuildPartialScript(form, paths);
        testing::require(page.starts_with("CLEAR\r\n"));
        const auto name = bitmapName(paths, form.txtPath);
        const bool hasContent = !form.txtText.empty() && (!form.bitmap || name);
        testing::require((page == "CLEAR\r\n") == !hasContent);
        if (hasContent) {
            const std::string content = form.bitmap ? *name + "\r\n" : '"' + scan.DisplayText + "\"\r\n";
            testing::require(page.find(content) != std::string::npos);
        }
    }
    return 0;
}
