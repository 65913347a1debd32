#include "tests/fuzz/ReaderRun.h"

#include "items/AcceptanceCopy.h"
#include "items/CheckedTexts.h"

/// Any bytes are what is kept of an acceptance, and its texts under their checksum.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const std::string_view bytes = testing::inputBytes(data, size);
    for (const auto& read :
         {readAcceptanceCopy(bytes), readAcceptanceCopy(checkedTexts("orvista-acceptance 1\n", bytes))}) {
        if (!read)
            continue;
        const auto again = readAcceptanceCopy(acceptanceCopy(*read));
        testing::require(again && again->before == read->before && again->written == read->written);
    }
    return 0;
}
