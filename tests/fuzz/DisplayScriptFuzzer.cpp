#include "tests/fuzz/ReaderRun.h"
#include "tests/support/PageDuration.h"
#include "tests/support/StoredBitmaps.h"

#include "display/RasterAt.h"

#include <algorithm>

namespace {

using namespace orvista;

/// Any bytes can be scripts, bitmaps and play lists alike.
Programme programmeOf(std::string_view bytes) {
    StoredBitmaps bitmaps;
    bitmaps.store("a.bmp", std::string(bytes));
    Programme programme({24}, fieldFormats(Project()));
    programme.add({}, bytes, bitmaps);
    return programme;
}

void checkDurations(const Programme& programme) {
    std::int64_t sum = 0;
    for (std::size_t page = 0; page < programme.pageCount(); ++page)
        sum += pageDuration(programme, page);
    testing::require(sum == programme.duration());
}

} // namespace

/// The pages fill one round exactly, every round shows the same, and a script without pages shows nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = testing::inputBytes(data, size);
    const Programme programme = programmeOf(bytes);
    checkDurations(programme);
    const DisplayValues values;
    const std::int64_t round = programme.duration();
    for (const std::int64_t t : {std::int64_t{0}, round / 3, round / 2, std::max<std::int64_t>(round - 1, 0)})
        testing::require(rasterAt(programme, values, t) == rasterAt(programme, values, t + round));
    if (programme.pageCount() == 0)
        testing::require(rasterAt(programme, values, 0) == LedRaster({24}));

    for (const std::size_t message : readPlayList(bytes).messages)
        testing::require(message < regularMessageCount);
    return 0;
}
