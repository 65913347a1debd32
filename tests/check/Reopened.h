#pragma once

#include "model/Bytes.h"
#include "model/DeviceFiles.h"
#include "model/ProjectFile.h"
#include "model/ProjectFileSections.h"

#include <vector>

namespace orvista {

/// The project as it is after it was saved and opened again.
inline Project reopened(const Project& project) {
    MemorySink sink;
    DocMgrModule::writeProjectFile(sink, project);
    MemorySource source(sink.bytes());
    std::vector<DocMgrModule::ProjectFileSection> sections;
    DocMgrModule::takeApart(source, sections);
    Project again;
    for (const DeviceFile* file : deviceFiles)
        if (const auto* section = DocMgrModule::lastSectionOf(*file, sections);
            section != nullptr && file->readSection != nullptr) {
            MemorySource lines(section->lines);
            file->readSection(lines, again, nullptr);
        }
    return again;
}

} // namespace orvista
