#include "tests/fuzz/ReaderRun.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    Project project;
    testing::readBytes(testing::inputBytes(data, size), project, ConfigModule::readStdMsg);
    testing::require(testing::rowsAreWholeLines(project.STDMSG));
    testing::require(project.ALTMSG == Project().ALTMSG);
    return 0;
}
