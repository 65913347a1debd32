#include "check/Mending.h"

#include "check/FileFindings.h"
#include "model/Bytes.h"
#include "model/DeviceFiles.h"
#include "model/Files.h"
#include "model/FolderLookup.h"
#include "model/NoMessages.h"
#include "model/ProjectFile.h"
#include "model/ProjectFileSections.h"
#include "model/Text.h"

#include <algorithm>
#include <string_view>

namespace orvista {

namespace {

using DocMgrModule::ProjectFileSection;

bool losesSomething(const TableReading& reading) {
    return std::ranges::any_of(reading.remarks.list(), isError);
}

/// Every row is filled, and by what its name says.
bool isComplete(const TableReading& reading) {
    return reading.isRead && reading.unfilled.empty() && !reading.endsInBlock && !losesSomething(reading);
}

class Mending {
public:
    Mending(const std::string& path, const std::string& folder, const PathRules& paths)
        : folder_(folder), context_{paths, silent_} {
        FileSource source(projectFileOnDisk(paths, path));
        outline_ = DocMgrModule::takeApart(source, sections_);
        Project unused;
        DocMgrModule::readProjectWithoutWriting(path, unused, context_, &remarks_);
    }

    Mended mend() {
        for (const ProjectFileSection& section : sections_)
            DocMgrModule::takeSettings(section, mended_.project);
        mended_.isDisplaySure = !met(FileRemarkKind::MissingItems, settingsSection) &&
                                !(outline_.endsInSettings && met(FileRemarkKind::MissingSection));
        for (const FileRemark& remark : remarks_.list())
            if (isError(remark) && (remark.section.empty() || remark.section == settingsSection) &&
                remark.kind != FileRemarkKind::NotAProject)
                mended_.faults.push_back(errorText(remark));
        for (const DeviceFile* const file : deviceFiles)
            if (file->readSection != nullptr && !readSection(*file))
                takeFile(*file);
        return std::move(mended_);
    }

private:
    /// \param section any where it is empty
    bool met(FileRemarkKind kind, std::string_view section = {}) const {
        return std::ranges::any_of(remarks_.list(), [&](const FileRemark& remark) {
            return remark.kind == kind && (section.empty() || remark.section == section);
        });
    }

    /// False where the section is not whole.
    bool readSection(const DeviceFile& file) {
        const ProjectFileSection* const section = DocMgrModule::lastSectionOf(file, sections_);
        const bool isBroken = std::ranges::any_of(remarks_.list(), [&file](const FileRemark& remark) {
            return isError(remark) && remark.file.empty() && remark.section == file.sectionName;
        });
        if (section == nullptr || isBroken || mayEndInNumber(*section))
            return false;
        MemorySource source(section->lines);
        TableReading reading;
        ConfigModule::readFrom(source, mended_.project, context_, file.readSection, &reading);
        return !losesSomething(reading); // with the addresses of another file variables lie elsewhere
    }

    /// Where the file was cut off within an address its first digits may be left, which are an address,
    /// too.
    bool mayEndInNumber(const ProjectFileSection& section) const {
        return section.file == &modbusAdrFile && &section == &sections_.back() && !outline_.endsInSettings &&
               met(FileRemarkKind::MissingSection);
    }

    void takeFile(const DeviceFile& file) {
        const std::string path = context_.paths.join(folder_, file.name);
        const std::string section = "[" + upperAscii(file.sectionName) + "]";
        TableReading reading;
        file.Read(path, mended_.project, context_, &reading);
        if (isComplete(reading))
            mended_.taken.push_back({section, path});
        else
            mended_.faults.push_back(section + " is not whole, and " + path +
                                     (reading.isRead ? " is not whole either" : " cannot be read"));
    }

    std::string folder_;
    NoMessages silent_;
    DocMgrModule::FileContext context_;
    std::vector<ProjectFileSection> sections_;
    DocMgrModule::ProjectFileOutline outline_;
    FileRemarks remarks_;
    Mended mended_;
};

} // namespace

Mended mendedProject(const std::string& path, const std::string& folder, const PathRules& paths) {
    return Mending(path, folder, paths).mend();
}

} // namespace orvista
