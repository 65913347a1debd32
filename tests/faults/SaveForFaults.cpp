#include "model/ProjectFile.h"
#include "tests/support/ScriptedPeople.h"

#include <cstdio>

#include <unistd.h>

/// save_for_faults FOLDER WORDS: saves a project with these words in its messages as FOLDER/Plant.orx. Prints
/// the outcome and every message on a line. Calls that fail by themselves show where the save begins and
/// ends.
int main(int argc, char** argv) {
    using namespace orvista;
    if (argc != 3)
        return 2;
    Project project;
    for (std::string& text : project.STDMSG)
        text = std::string("TEXT 0 0 RED BLACK \"") + argv[2] + "\"";
    const PathRules paths = PathRules::native();
    testing::ScriptedMessages messages;

    [[maybe_unused]] int ignored = ::access("save begins", F_OK);
    const auto outcome = DocMgrModule::SaveProject(argv[1], "Plant", project, {paths, messages});
    ignored = ::access("save ends", F_OK);

    std::puts(outcome == DocMgrModule::SaveOutcome::Saved              ? "saved"
              : outcome == DocMgrModule::SaveOutcome::DeviceFileFailed ? "device file"
                                                                       : "project file");
    for (const auto& shown : messages.shown)
        std::puts(shown.text.c_str());
    return 0;
}
