#include "items/NotesFile.h"

#include "model/FileReplacing.h"
#include "model/Files.h"
#include "model/FolderLookup.h"
#include "model/PathRules.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "model/Text.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace orvista {

namespace {

constexpr std::string_view notesExtension = ".notes.json";

/// At most one byte more than notes may have; nothing where there is no file. \throws std::system_error
std::optional<std::string> bytesOf(const std::string& path) {
    try {
        FileSource source(path);
        return bytesUpTo(source, mostNotesBytes + 1);
    } catch (const OpenFailure& failure) {
        if (failure.code() == std::errc::no_such_file_or_directory)
            return std::nullopt;
        throw;
    }
}

/// The path with its name as it stands in the folder: projects are found in any case, so are their notes.
std::string asOnDisk(std::string path) {
    const auto parts = PathRules::native().split(path);
    const std::size_t length = parts ? parts->name.size() : path.size();
    const std::string found = projectFileOnDisk(PathRules::native(), path);
    return path.replace(path.size() - length, length, found, found.size() - length, length);
}

[[noreturn]] void fail(const std::string& path, const std::system_error& failure) {
    throw NotesFailure(path + ": " + failure.code().message());
}

} // namespace

std::string notesPath(const std::string& projectPath) {
    const bool hasExtension = endsWithIgnoringCase(projectPath, DocMgrModule::projectExtension);
    return asOnDisk(projectPath.substr(0, projectPath.size() -
                                              (hasExtension ? DocMgrModule::projectExtension.size() : 0)) +
                    std::string(notesExtension));
}

std::string notesPath(const Project& project) {
    if (project.ProjName.empty())
        return {};
    return asOnDisk(
        PathRules::native().join(project.ProjPath, project.ProjName + std::string(notesExtension)));
}

NotesReading readNotesFile(const std::string& path) {
    NotesReading reading;
    try {
        const auto bytes = bytesOf(path);
        return bytes ? readNotes(*bytes) : reading;
    } catch (const std::system_error& failure) {
        reading.fault = failure.code().message();
        reading.mayHideMaster = true;
        return reading;
    }
}

std::string notesFaultText(const std::string& name, const NotesReading& reading) {
    return reading.fault.empty() ? std::string() : name + " is not taken: " + reading.fault;
}

ProjectNotes changeNotes(const std::string& path, const ProjectNotes& before, const ProjectNotes& after) {
    try {
        const std::string former = bytesOf(path).value_or(std::string());
        const NotesReading now = former.empty() ? NotesReading() : readNotes(former);
        if (!now.fault.empty())
            throw NotesFailure(notesFaultText(path, now) + "; mend or remove it first");
        ProjectNotes notes = withDifferences(now.notes, before, after);
        if (const auto faults = noteFaults(notes); !faults.empty())
            throw NotesFailure(path + ": " + nameOf(faults.front().item) + ": " + faults.front().text);
        const std::string bytes = notesBytes(former, notes);
        if (bytes != former)
            replaceFile(path, bytes);
        return notes;
    } catch (const std::invalid_argument& failure) {
        throw NotesFailure(path + " is not written: " + failure.what());
    } catch (const std::system_error& failure) {
        fail(path, failure);
    }
}

void writeChangedNotes(const std::string& from, const std::string& to, const ProjectNotes& after) {
    try {
        replaceFile(to, notesBytes(bytesOf(from).value_or(std::string()), after));
    } catch (const std::invalid_argument& failure) {
        throw NotesFailure(to + " is not written: " + failure.what());
    } catch (const std::system_error& failure) {
        fail(to, failure);
    }
}

void copyNotesFile(const std::string& from, const std::string& to) {
    std::error_code error;
    if (std::filesystem::equivalent(systemPath(from), systemPath(to), error))
        return;
    try {
        const auto bytes = bytesOf(from);
        if (bytes && bytes->size() > mostNotesBytes)
            throw NotesFailure(from + " is not copied: " + notesSizeFault());
        if (bytes)
            replaceFile(to, *bytes);
    } catch (const std::system_error& failure) {
        fail(to, failure);
    }
}

void copyNotes(const std::string& fromProject, const std::string& toProject) {
    copyNotesFile(notesPath(fromProject), notesPath(toProject));
}

} // namespace orvista
