#include "tests/fuzz/ReaderRun.h"

/// What was read is written and read again without a change, with and without the empty lines of the
/// project file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    Project project;
    testing::readBytes(testing::inputBytes(data, size), project, ConfigModule::readIlmVar);

    for (const auto gap : {DocMgrModule::BooleanBlockGap::None, DocMgrModule::BooleanBlockGap::EmptyLine}) {
        MemorySink written;
        DocMgrModule::writeIlmVar(written, project, gap);
        Project again;
        testing::readBytes(written.bytes(), again, ConfigModule::readIlmVar);
        testing::require(again.RegVar == project.RegVar);
        testing::require(again.CoilVar == project.CoilVar);
    }
    return 0;
}
