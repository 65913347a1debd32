#include "model/Bytes.h"
#include "tests/fuzz/ReaderRun.h"

#include "model/DeviceFileWriters.h"

/// What was read is written and read again without a change.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    Project project;
    testing::readBytes(testing::inputBytes(data, size), project, ConfigModule::readModbusAdr);

    MemorySink written;
    DocMgrModule::writeModbusAdr(written, project);
    Project again;
    testing::readBytes(written.bytes(), again, ConfigModule::readModbusAdr);
    testing::require(again.AnalogInput == project.AnalogInput);
    testing::require(again.DigitalInput == project.DigitalInput);
    testing::require(again.AlertMessage == project.AlertMessage);
    testing::require(again.RegularMessage == project.RegularMessage);
    testing::require(project.RegularMessage == regularStartAfter(project.AlertMessage));
    return 0;
}
