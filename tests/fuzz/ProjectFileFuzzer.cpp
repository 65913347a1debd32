#include "model/Bytes.h"
#include "tests/fuzz/ReaderRun.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include "model/ProjectFile.h"

/// Any bytes are a project file: it is read to its end, whatever it holds, and what it gave is written again,
/// into memory: a save waits for the disk.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const testing::TemporaryFolder folder;
    const std::string path = folder.file("PLANT.orx");
    testing::writeBytes(path, std::string(testing::inputBytes(data, size)));

    const PathRules paths = PathRules::native();
    testing::ScriptedMessages messages;
    const DocMgrModule::FileContext context{paths, messages};
    Project project;
    testing::require(DocMgrModule::ReadProject(path, project, context));
    MemorySink written;
    DocMgrModule::writeProjectFile(written, project);
    testing::require(written.bytes().starts_with("[CONFIG]\r\n"));
    return 0;
}
