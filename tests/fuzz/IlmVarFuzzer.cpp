#include "model/Bytes.h"
#include "tests/fuzz/ReaderRun.h"

#include "model/DeviceFileWriters.h"

/// What was read is written and read again without a change, by the size of the input with or without the
/// empty lines of the project file. Writing and reading all 96 variables takes far longer than reading the
/// input, so it is done once, and only where the input changed one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    Project project;
    testing::readBytes(testing::inputBytes(data, size), project, ConfigModule::readIlmVar);

    static const Project fresh;
    if (project.RegVar == fresh.RegVar && project.CoilVar == fresh.CoilVar)
        return 0;

    MemorySink written;
    (size % 2 == 0 ? DocMgrModule::writeIlmVar : DocMgrModule::writeIlmVarSection)(written, project);
    Project again;
    testing::readBytes(written.bytes(), again, ConfigModule::readIlmVar);
    testing::require(again.RegVar == project.RegVar);
    testing::require(again.CoilVar == project.CoilVar);
    return 0;
}
