#include "tests/fuzz/ReaderRun.h"

#include "sheets/MessageSheet.h"
#include "sheets/VariableSheet.h"

namespace {

using namespace orvista;

/// What was imported changes nothing when it is exported and imported again.
void checkImport(const SheetImport& import, Project project) {
    testing::require(import.errors.none() || import.changes.empty());
    if (import.changes.empty()) // exporting the same project again and again proves nothing
        return;
    applyChanges(project, import.changes);
    for (const auto form : {MessageSheetForm::Scripts, MessageSheetForm::Pages})
        testing::require(importMessages(messageSheet(project, form).csv, project).changes.empty());
    const SheetImport variables = importVariables(variableSheet(project), project);
    testing::require(variables.errors.none() && variables.changes.empty());
}

} // namespace

/// Any bytes are a sheet of messages and one of variables.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = testing::inputBytes(data, size);
    const Project project;
    checkImport(importMessages(bytes, project), project);
    checkImport(importVariables(bytes, project), project);
    return 0;
}
