#pragma once

#include "items/NotesJson.h"
#include "model/ProjectFile.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <stdexcept>
#include <string>

namespace orvista::testing {

/// The pump station, read from a copy: opening a project rewrites files beside it.
inline Project exampleProject() {
    const TemporaryFolder folder;
    const std::string copy = folder.file("PUMPSTATION.orx");
    writeBytes(copy, fileBytes(std::string(ORVISTA_EXAMPLES) + "/pumpstation/PUMPSTATION.orx"));
    const PathRules paths = PathRules::native();
    ScriptedMessages messages;
    Project project;
    if (!DocMgrModule::ReadProject(copy, project, {paths, messages}))
        throw std::runtime_error("the example cannot be read");
    project.ProjName = "PUMPSTATION";
    return project;
}

/// What is noted beside it.
inline ProjectNotes exampleNotes() {
    return readNotes(fileBytes(std::string(ORVISTA_EXAMPLES) + "/pumpstation/PUMPSTATION.notes.json")).notes;
}

inline std::string golden(const std::string& name) {
    return fileBytes(std::string(ORVISTA_GOLDEN) + "/" + name);
}

} // namespace orvista::testing
