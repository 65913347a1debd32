#include "display/PlayList.h"
#include "tests/fuzz/ReaderRun.h"

/// Any bytes are a play list, which names regular messages only and not without end.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const PlayList list = readPlayList(testing::inputBytes(data, size));
    testing::require(list.messages.size() <= 1000);
    for (const std::size_t message : list.messages)
        testing::require(message < regularMessageCount);
    for (const auto& remark : list.remarks)
        testing::require(remark.line >= 1 && remark.text.size() <= size);
    return 0;
}
