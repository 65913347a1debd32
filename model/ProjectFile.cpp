#include "model/ProjectFile.h"

#include "model/DeviceFiles.h"
#include "model/FileReplacing.h"
#include "model/FolderLookup.h"
#include "model/ProjectFileSections.h"
#include "model/SystemFile.h"
#include "model/Text.h"

#include <filesystem>
#include <system_error>
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

/// The message for the user when it fails, with what came before in `sections`.
std::string readSections(const std::string& path, const PathRules& paths,
                         std::vector<ProjectFileSection>& sections) {
    try {
        const std::string file = projectFileOnDisk(paths, path);
        FileSource source(file);
        std::error_code unknown;
        const auto size = std::filesystem::file_size(systemPath(file), unknown);
        takeApart(source, sections, unknown ? 0 : static_cast<std::size_t>(size));
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

/// Reads the device files from their sections. What has none is read from its file, and so is a file that
/// does not give back what was written to it, for instance one that may be written but not read.
void readTables(const std::vector<ProjectFileSection>& sections, const std::string& folder,
                DeviceFilesAre state, Project& project, const FileContext& context) {
    for (const DeviceFile* const file : deviceFiles) {
        if (file->readSection == nullptr)
            continue;
        const std::string path = context.paths.join(folder, file->name);
        const ProjectFileSection* const section = lastSectionOf(*file, sections);
        if (section == nullptr || (state == DeviceFilesAre::Written &&
                                   !holdsSection(deviceFileOnDisk(context.paths, path), *section))) {
            file->Read(path, project, context);
        } else {
            MemorySource source(section->lines);
            ConfigModule::readFrom(source, project, context, file->readSection);
        }
    }
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
    const std::string path = projectFilePath(context.paths, folder, name);
    if (!saveProjectFile(path, project, context))
        return SaveOutcome::ProjectFileFailed;
    const FileContext durable{context.paths, context.messages, projectFileOnDisk(context.paths, path),
                              Durability::OnDisk};
    return saveDeviceFiles(folder, project, durable) ? SaveOutcome::Saved : SaveOutcome::DeviceFileFailed;
}

bool ReadProject(const std::string& path, Project& project, const FileContext& context) {
    const auto parts = context.paths.split(path);
    const std::string folder = parts ? parts->folder : std::string{};
    const FileContext opening{context.paths, context.messages, projectFileOnDisk(context.paths, path)};
    std::vector<ProjectFileSection> sections;
    const std::string readFailure = readSections(path, context.paths, sections);
    // What came before a failure is written all the same.
    if (showFailure(writeSections(sections, folder, opening, project), context) ||
        showFailure(readFailure, context))
        return false;
    defaultPlsFile.Write(context.paths.join(folder, defaultPlsFile.name), project, opening);
    readTables(sections, folder, DeviceFilesAre::Written, project, context);
    return true;
}

bool readProjectWithoutWriting(const std::string& path, Project& project, const FileContext& context) {
    const SplitPath parts = context.paths.split(path).value_or(SplitPath{".", path});
    std::vector<ProjectFileSection> sections;
    const std::string failure = readSections(path, context.paths, sections);
    for (const ProjectFileSection& section : sections)
        takeSettings(section, project);
    if (showFailure(failure, context))
        return false;
    readTables(sections, parts.folder, DeviceFilesAre::AsTheyWere, project, context);
    project.ProjPath = parts.folder;
    project.ProjName = projectNameOfFile(parts.name);
    return true;
}

} // namespace orvista::DocMgrModule
