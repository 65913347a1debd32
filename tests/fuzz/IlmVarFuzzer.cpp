#include "tests/fuzz/ReaderRun.h"

#include "model/DeviceFileWriters.h"

/// What was read is written and read again without a change, with and without the empty lines of the
/// project file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    Project project;
    testing::readBytes(testing::inputBytes(data, size), project, ConfigModule::readIlmVar);

    for (const auto write : {DocMgrModule::writeIlmVar, DocMgrModule::writeIlmVarSection}) {
        MemorySink written;
        write(written, project);
        Project again;
        testing::readBytes(written.bytes(), again, ConfigModule::readIlmVar);
        testing::require(again.RegVar == project.RegVar);
        testing::require(again.CoilVar == project.CoilVar);
    }
    return 0;
}
