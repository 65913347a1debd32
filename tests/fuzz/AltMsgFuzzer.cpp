#include "tests/fuzz/ReaderRun.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    Project project;
    testing::readBytes(testing::inputBytes(data, size), project, ConfigModule::readAltMsg);
    testing::require(testing::rowsAreWholeLines(project.ALTMSG));
    testing::require(project.STDMSG == Project().STDMSG);
    return 0;
}
