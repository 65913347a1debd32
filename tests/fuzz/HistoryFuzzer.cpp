#include "model/History.h"
#include "tests/fuzz/ReaderRun.h"
#include "tests/support/TemporaryFolder.h"

/// Any bytes are a history; what was read of it is written and read again without a change.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    static const testing::TemporaryFolder folder;
    testing::writeBytes(folder.file("history.cache"), std::string(testing::inputBytes(data, size)));
    const PathRules paths = PathRules::native();
    ConfigModule::History history(paths, folder.path());
    history.ReadHistory();
    history.WriteHistory("/plants", "Line3");
    testing::require(history.rows()[0] == "/plants/Line3");

    ConfigModule::History again(paths, folder.path());
    again.ReadHistory();
    std::size_t row = 0;
    for (const std::string& written : history.rows())
        testing::require(written.empty() || again.rows()[row++] == written);
    return 0;
}
