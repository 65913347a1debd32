#pragma once

#include "model/DeviceFiles.h"
#include "model/FileRemarks.h"
#include "model/ProjectFileSections.h"

namespace orvista {

/// Adds what reading a device file gave, in the file's own lines.
void addRemarks(const DeviceFile& file, const TableReading& reading, FileRemarks& remarks);

/// Adds what reading the sections of a project file gave, in the project file's lines.
class SectionRemarks {
public:
    /// \param sections of the project file, which outlive this
    SectionRemarks(const std::vector<DocMgrModule::ProjectFileSection>& sections,
                   const DocMgrModule::ProjectFileOutline& outline, FileRemarks& remarks)
        : sections_(sections), outline_(outline), remarks_(remarks) {}

    /// In the order in which they are read.
    void add(const DocMgrModule::ProjectFileSection& section, const TableReading& reading);
    /// The folder's file was read in a section's place.
    void addFile(const DeviceFile& file, const TableReading& reading) { addRemarks(file, reading, remarks_); }
    /// Says what all sections together say.
    void finish();

private:
    struct Unfilled {
        const DocMgrModule::ProjectFileSection* section;
        std::vector<std::string> names;
    };
    bool isCutBehind(const Unfilled& last) const;

    const std::vector<DocMgrModule::ProjectFileSection>& sections_;
    const DocMgrModule::ProjectFileOutline& outline_;
    FileRemarks& remarks_;
    std::vector<Unfilled> unfilled_;
    bool endsInBlock_ = false;
};

} // namespace orvista
