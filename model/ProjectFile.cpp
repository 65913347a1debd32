#include "model/ProjectFile.h"

#include "model/DeviceFiles.h"
#include "model/FileReplacing.h"
#include "model/Files.h"
#include "model/FolderLookup.h"
#include "model/Lines.h"
#include "model/NoMessages.h"
#include "model/ProjectFileSections.h"
#include "model/ReadingRemarks.h"
#include "model/StagedFiles.h"
#include "model/SystemFile.h"
#include "model/SystemPath.h"
#include "model/Text.h"

#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace orvista::DocMgrModule {

namespace {

void writeSettings(ByteSink& sink, const Project& project) {
    sink.write("[CONFIG]\r\nSerialPort   ");
    sink.write(project.SerialPort);
    sink.write("\r\nIP   ");
    sink.write(project.IP);
    sink.write(lineEnd);
}

bool saveProjectFile(const std::string& path, const Project& project, const FileContext& context) {
    MemorySink bytes;
    writeProjectFile(bytes, project);
    try {
        replaceFile(projectFileOnDisk(context.paths, path), bytes.bytes());
        return true;
    } catch (const OpenFailure&) {
        context.messages.show(MessageIcon::Exclamation, "unable to open " + path);
    } catch (const WriteFailure& failure) {
        context.messages.show(MessageIcon::None, failure.what());
    }
    return false;
}

/// Files that are new are on the disk once their names are, too.
bool syncNames(const std::string& folder, const FileContext& context) {
    try {
        syncFolder(systemPath(context.paths.join(folder, {})));
        return true;
    } catch (const WriteFailure&) {
        context.messages.show(MessageIcon::Exclamation, "unable to open " + folder);
        return false;
    }
}

/// Every file is tried, also after one has failed.
bool saveDeviceFiles(const std::string& folder, const Project& project, const FileContext& context) {
    bool all = true;
    for (const DeviceFile* const file : savedDeviceFiles)
        all = file->Write(context.paths.join(folder, file->name), project, context) && all;
    return syncNames(folder, context) && all;
}

/// Tells the user of a failure; an empty text is none.
bool showFailure(const std::string& failure, const FileContext& context) {
    if (!failure.empty())
        context.messages.show(MessageIcon::None, failure);
    return !failure.empty();
}

/// A project file taken apart, and what was met on the way.
struct Parts {
    std::vector<ProjectFileSection> sections;
    ProjectFileOutline outline;
    FileRemarks remarks;
};

/// The message for the user when it fails, with what came before in `parts`.
std::string readSections(const std::string& path, const PathRules& paths, Parts& parts) {
    try {
        const std::string file = projectFileOnDisk(paths, path);
        FileSource source(file);
        std::error_code unknown;
        const auto size = std::filesystem::file_size(systemPath(file), unknown);
        parts.outline =
            takeApart(source, parts.sections, unknown ? 0 : static_cast<std::size_t>(size), &parts.remarks);
        return {};
    } catch (const OpenFailure&) {
        return "Unable to open " + path;
    } catch (const ReadFailure&) {
        return "exception ooccured when reading data from " + path;
    }
}

std::string writeSections(const std::vector<ProjectFileSection>& sections, const std::string& folder,
                          const FileContext& context, Project& project) {
    try {
        writeDeviceFiles(sections, folder, context, project);
        return {};
    } catch (const SectionFailure& failure) {
        return failure.what();
    }
}

bool holdsSection(const std::string& path, const ProjectFileSection& section) {
    try {
        const FileSource readable(path);
        std::error_code error;
        return std::filesystem::file_size(systemPath(path), error) == section.lines.size();
    } catch (const OpenFailure&) {
        return false;
    }
}

/// Whether the device files have just been written from the sections, so that they can be read in their
/// stead.
enum class DeviceFilesAre { Written, AsTheyWere };

/// The section that a table is read from; null where it is read from its file, because there is no section
/// or because the file does not give back what was written to it, for instance one that may be written but
/// not read.
const ProjectFileSection* sectionToRead(const DeviceFile& file, const Parts& parts, const std::string& path,
                                        DeviceFilesAre state, const PathRules& paths) {
    const ProjectFileSection* const section = lastSectionOf(file, parts.sections);
    const bool isFaithful = section == nullptr || state == DeviceFilesAre::AsTheyWere ||
                            holdsSection(deviceFileOnDisk(paths, path), *section);
    return isFaithful ? section : nullptr;
}

/// Reads the device files from their sections, or where there is none from the folder.
/// \param remarks gets what is met, also before
void readTables(const Parts& parts, const std::string& folder, DeviceFilesAre state, Project& project,
                const FileContext& context, FileRemarks* remarks = nullptr) {
    FileRemarks met = parts.remarks;
    SectionRemarks ofSections(parts.sections, parts.outline, met);
    for (const DeviceFile* const file : deviceFiles) {
        if (file->readSection == nullptr)
            continue;
        const std::string path = context.paths.join(folder, file->name);
        TableReading reading;
        TableReading* const wanted = remarks != nullptr ? &reading : nullptr;
        if (const auto* const section = sectionToRead(*file, parts, path, state, context.paths)) {
            MemorySource source(section->lines);
            ConfigModule::readFrom(source, project, context, file->readSection, wanted);
            ofSections.add(*section, reading);
        } else {
            file->Read(path, project, context, wanted);
            ofSections.addFile(*file, reading);
        }
    }
    if (remarks == nullptr)
        return;
    ofSections.finish();
    *remarks = std::move(met);
}

/// What the readers will meet, before anything is replaced.
FileRemarks remarksAhead(const Parts& parts, const std::string& folder, const PathRules& paths) {
    NoMessages silent;
    Project tried;
    FileRemarks remarks;
    readTables(parts, folder, DeviceFilesAre::AsTheyWere, tried, {paths, silent}, &remarks);
    return remarks;
}

} // namespace

void writeProjectFile(ByteSink& sink, const Project& project) {
    writeSettings(sink, project);
    for (const DeviceFile* const file : savedDeviceFiles) {
        if (file->writeSection == nullptr)
            continue;
        sink.write("[" + upperAscii(file->sectionName) + "]");
        sink.write(lineEnd);
        file->writeSection(sink, project);
    }
}

std::string projectNameOfFile(const std::string& fileName) {
    const auto isTrailByte = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
    std::size_t end = fileName.size();
    for (std::size_t dropped = 0; end > 0 && dropped < projectExtension.size(); ++dropped) {
        --end;
        while (end > 0 && isTrailByte(fileName[end]))
            --end;
    }
    return fileName.substr(0, end);
}

std::string projectFilePath(const PathRules& paths, const std::string& folder, const std::string& name) {
    return paths.join(folder, name + std::string(projectExtension));
}

SaveOutcome SaveProject(const std::string& folder, const std::string& name, const Project& project,
                        const FileContext& context) {
    finishStaging(folder); // or what is saved now could be replaced by it later
    const std::string path = projectFilePath(context.paths, folder, name);
    if (!saveProjectFile(path, project, context))
        return SaveOutcome::ProjectFileFailed;
    const FileContext durable{context.paths, context.messages, projectFileOnDisk(context.paths, path),
                              Durability::OnDisk};
    return saveDeviceFiles(folder, project, durable) ? SaveOutcome::Saved : SaveOutcome::DeviceFileFailed;
}

bool ReadProject(const std::string& path, Project& project, const FileContext& context,
                 const BeforeReplacing& beforeReplacing) {
    const auto place = context.paths.split(path);
    const std::string folder = place ? place->folder : std::string{};
    finishStaging(folder);
    const FileContext opening{context.paths, context.messages, projectFileOnDisk(context.paths, path)};
    Parts parts;
    const std::string readFailure = readSections(path, context.paths, parts);
    if (beforeReplacing && !parts.sections.empty())
        beforeReplacing(folder, remarksAhead(parts, folder, context.paths));
    // What came before a failure is written all the same.
    if (showFailure(writeSections(parts.sections, folder, opening, project), context) ||
        showFailure(readFailure, context))
        return false;
    defaultPlsFile.Write(context.paths.join(folder, defaultPlsFile.name), project, opening);
    readTables(parts, folder, DeviceFilesAre::Written, project, context);
    return true;
}

bool readProjectWithoutWriting(const std::string& path, Project& project, const FileContext& context,
                               FileRemarks* remarks) {
    const SplitPath place = context.paths.split(path).value_or(SplitPath{".", path});
    finishStaging(place.folder);
    Parts parts;
    const std::string failure = readSections(path, context.paths, parts);
    for (const ProjectFileSection& section : parts.sections)
        takeSettings(section, project);
    if (showFailure(failure, context))
        return false;
    readTables(parts, place.folder, DeviceFilesAre::AsTheyWere, project, context, remarks);
    project.ProjPath = place.folder;
    project.ProjName = projectNameOfFile(place.name);
    return true;
}

} // namespace orvista::DocMgrModule
