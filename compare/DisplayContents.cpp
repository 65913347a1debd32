#include "compare/DisplayContents.h"

#include "model/BitmapFiles.h"
#include "model/Files.h"
#include "model/FolderLookup.h"
#include "model/Item.h"
#include "model/Numbers.h"
#include "model/ReadingRemarks.h"
#include "model/Sha256.h"
#include "model/SystemPath.h"
#include "model/Text.h"
#include "model/Windows1252.h"
#include "script/BitmapNames.h"
#include "script/ScriptInterpreter.h"
#include "script/ScriptLines.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <system_error>

namespace orvista {

namespace {

/// \throws std::system_error, whose text names the path
std::string bytesOf(const std::string& path) {
    try {
        FileSource source(path);
        std::string bytes;
        std::array<char, 65536> buffer{};
        while (const std::size_t count = source.read(buffer.data(), buffer.size()))
            bytes.append(buffer.data(), count);
        return bytes;
    } catch (const OpenFailure& failure) {
        throw std::system_error(failure.code(), path);
    } catch (const ReadFailure& failure) {
        throw std::system_error(failure.code(), path);
    }
}

std::optional<std::string> bytesWhereThere(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::exists(systemPath(path), error))
        return std::nullopt;
    return bytesOf(path);
}

std::optional<std::string> bytesAmong(const FetchedFiles& files, std::string_view name) {
    const auto file = std::ranges::find(files.inMemory(), name, &FetchedFiles::File::name);
    return file == files.inMemory().end() ? std::nullopt : std::optional(file->bytes);
}

std::string writtenBytes(const DeviceFile& file, const Project& project) {
    MemorySink sink;
    file.write(sink, project);
    return sink.bytes();
}

/// False where an address did not fit, which ends the reading.
bool readWhole(const HeldFile& held, Project& project, TableReading& reading) {
    MemorySource source(*held.bytes);
    try {
        held.file->readSection(source, project, &reading);
        return true;
    } catch (const Overflow&) {
        return false;
    }
}

bool isPlain(const DeviceFile& file, const TableReading& reading) {
    FileRemarks remarks;
    addRemarks(file, reading, remarks);
    return remarks.list().empty() && !reading.hasOddAddress;
}

/// Whether the reader took anything: of an empty file it leaves more unfilled.
bool tookSomething(const DeviceFile& file, const TableReading& reading) {
    TableReading ofNothing;
    Project project;
    MemorySource source("");
    file.readSection(source, project, &ofNothing);
    return reading.unfilled.size() < ofNothing.unfilled.size();
}

Project withLinesThatCount(Project project) {
    for (std::string& script : project.STDMSG)
        script = linesThatCount(script);
    for (std::string& script : project.ALTMSG)
        script = linesThatCount(script);
    return project;
}

/// Lower case, UTF-8.
template <typename Scripts>
void addShownBitmaps(const Scripts& scripts, std::set<std::string>& names) {
    for (const std::string& script : scripts)
        for (const std::string& name : bitmapNames(interpretScript(script).pages))
            names.insert(lowerAscii(utf8FromWindows1252(name)));
}

/// Lengths in front keep two texts from being taken for others that join to the same bytes.
void addText(Sha256& hash, std::string_view text) {
    hash.add(decimalText(text.size()) + ":");
    hash.add(text);
}

} // namespace

DisplayContents DisplayContents::ofFolder(const std::string& folder) {
    const PathRules paths = PathRules::native();
    DisplayContents contents;
    for (const DeviceFile* const file : deviceFiles)
        contents.files_.push_back(
            {file, bytesWhereThere(deviceFileOnDisk(paths, paths.join(folder, file->name))), std::nullopt});
    contents.read();
    contents.findBitmaps(folder);
    return contents;
}

DisplayContents DisplayContents::ofFetched(const FetchedFiles& files, const DisplayContents& before) {
    if (const auto folder = files.folder())
        return ofFolder(*folder);
    DisplayContents contents;
    for (const DeviceFile* const file : deviceFiles)
        contents.files_.push_back({file, bytesAmong(files, file->name), std::nullopt});
    if (contents.readsAs(before)) {
        contents.files_ = before.files_;
        contents.project_ = before.project_;
        contents.shown_ = before.shown_;
        contents.holdsProject_ = before.holdsProject_;
    } else {
        contents.read();
    }
    std::vector<std::string> names;
    for (const FetchedFiles::File& file : files.inMemory())
        names.push_back(file.name);
    contents.addBitmaps(bitmapsAmong(std::move(names)));
    for (HeldBitmap& bitmap : contents.bitmaps_)
        bitmap.bytes = bytesAmong(files, bitmap.name);
    return contents;
}

bool DisplayContents::readsAs(const DisplayContents& other) const {
    return std::ranges::equal(files_, other.files_, {}, &HeldFile::bytes, &HeldFile::bytes);
}

DisplayContents DisplayContents::ofProject(const Project& project) {
    DisplayContents contents;
    for (const DeviceFile* const file : deviceFiles)
        contents.files_.push_back({file, writtenBytes(*file, project), std::nullopt});
    contents.read();
    contents.keepScripts(project);
    contents.findBitmaps(project.ProjPath);
    return contents;
}

DisplayContents DisplayContents::ofUpload(const Project& project) {
    DisplayContents contents = project.modified ? ofProject(project) : ofFolder(project.ProjPath);
    for (const HeldFile& held : contents.files_)
        if (!held.bytes)
            throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory),
                                    PathRules::native().join(project.ProjPath, std::string(held.file->name)));
    contents.keepScripts(project);
    return contents;
}

void DisplayContents::keepScripts(const Project& project) {
    for (const Item message : allMessages())
        if (std::string& script = scriptOf(project_, message); equivalent(script, scriptOf(project, message)))
            script = scriptOf(project, message);
}

void DisplayContents::read() {
    std::vector<HeldFile*> plain;
    for (HeldFile& held : files_) {
        if (held.file->readSection == nullptr || !held.bytes)
            continue;
        TableReading reading;
        const bool isWhole = readWhole(held, project_, reading);
        holdsProject_ |= tookSomething(*held.file, reading);
        if (isWhole && isPlain(*held.file, reading))
            plain.push_back(&held);
    }
    const Project said = withLinesThatCount(project_);
    for (HeldFile* const held : plain)
        held->meaning = writtenBytes(*held->file, said);
    // The display knows bitmaps in any ASCII case.
    addShownBitmaps(project_.STDMSG, shown_);
    addShownBitmaps(project_.ALTMSG, shown_);
}

void DisplayContents::findBitmaps(const std::string& folder) {
    addBitmaps(bitmapsOfFolder(folder));
    for (HeldBitmap& bitmap : bitmaps_)
        bitmap.path = PathRules::native().join(folder, bitmap.name);
}

void DisplayContents::addBitmaps(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        const std::string lower = lowerAscii(name);
        const bool isAlone = std::ranges::count(names, lower, lowerAscii) == 1;
        bitmaps_.push_back({name, {}, {}, isAlone ? lower : name, shown_.contains(lower)});
    }
}

std::vector<std::string> DisplayContents::missingFiles() const {
    std::vector<std::string> names;
    for (const HeldFile& held : files_)
        if (!held.bytes && held.file->readSection != nullptr)
            names.emplace_back(held.file->name);
    return names;
}

std::string fingerprint(const DisplayContents& contents) {
    constexpr std::size_t digits = 12;
    Sha256 hash;
    for (const HeldFile& held : contents.files()) {
        if (held.file->readSection == nullptr)
            continue;
        addText(hash, held.meaning ? "meaning" : held.bytes ? "bytes" : "missing");
        addText(hash, held.meaning.value_or(held.bytes.value_or(std::string())));
    }
    for (const HeldBitmap& bitmap : contents.bitmaps()) {
        if (!bitmap.counts)
            continue;
        addText(hash, bitmap.key);
        addText(hash, bitmap.bytes ? *bitmap.bytes : bytesOf(bitmap.path));
    }
    return hash.hexDigest().substr(0, digits);
}

} // namespace orvista
