#include "tests/fuzz/ReaderRun.h"

#include "items/RecoveryFile.h"

namespace {

using namespace orvista;

/// What was read is written and read again as the same.
void checkCopy(const UnsavedWork& work) {
    testing::require(work.notApplied.size() <= maximumNotAppliedItems);
    const std::string bytes = recoveryBytes(work.project, work.notApplied);
    const auto again = readRecovery(bytes);
    testing::require(again && again->notApplied == work.notApplied &&
                     recoveryBytes(again->project, again->notApplied) == bytes);
}

} // namespace

/// Any bytes are a copy of unsaved work, and the texts of one under their checksum.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = testing::inputBytes(data, size);
    for (const auto& work : {readRecovery(bytes), readRecovery(recoveryFrame(bytes))})
        if (work)
            checkCopy(*work);
    return 0;
}
