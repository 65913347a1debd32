#include "model/ProjectFileSections.h"

#include "model/Files.h"
#include "model/Lines.h"
#include "model/Text.h"
#include "model/TextLines.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace orvista::DocMgrModule {

namespace {

/// The device file whose header the line is, or null.
const DeviceFile* fileOfHeader(std::string_view line) {
    if (!line.starts_with('[') || !line.ends_with(']'))
        return nullptr;
    const std::string_view name = line.substr(1, line.size() - 2);
    const auto found = std::ranges::find_if(deviceFiles, [name](const DeviceFile* file) {
        return file->writeSection != nullptr && equalsIgnoringCase(name, file->sectionName);
    });
    return found == deviceFiles.end() ? nullptr : *found;
}

bool isSettingsHeader(std::string_view line) {
    return equalsIgnoringCase(line, "[CONFIG]");
}

/// The value on a settings line. One character after the keyword is skipped, whatever it is.
std::string_view settingBehind(std::string_view line, std::string_view keyword) {
    return trimLeadingBlanks(line.substr(std::min(keyword.size() + 1, line.size())));
}

/// False for a line that sets nothing.
bool takeSettingLine(std::string_view line, ProjectFileSection& section) {
    constexpr std::string_view serialPort = "SERIALPORT";
    constexpr std::string_view ip = "IP";
    if (startsWithIgnoringCase(line, serialPort))
        section.SerialPort = settingBehind(line, serialPort);
    else if (startsWithIgnoringCase(line, ip))
        section.IP = settingBehind(line, ip);
    else
        return false;
    return true;
}

/// Takes a project file apart line by line.
class Parting {
public:
    Parting(std::vector<ProjectFileSection>& sections, std::size_t size, FileRemarks& remarks)
        : sections_(sections), size_(size), remarks_(remarks), text_(remarks) {
        sections_.emplace_back();
    }
    void take(std::string_view line, std::size_t number);
    void remarkMark() { remarks_.add({FileRemarkKind::Utf8Mark, {}, {}, 1}); }
    ProjectFileOutline finish(std::size_t lines);

private:
    void begin(const DeviceFile& file, std::size_t number);
    void copy(std::string_view line, std::size_t number);
    std::string_view section() const;
    void remarkSettings();

    std::vector<ProjectFileSection>& sections_;
    std::size_t size_;
    FileRemarks& remarks_;
    TextLines text_;
    bool inSettings_ = false;
    std::size_t settingsHeader_ = 0;                            ///< the first one's line
    FileRemark stray_{FileRemarkKind::StrayLine, {}, {}, 0, 0}; ///< before the first header
};

void Parting::take(std::string_view line, std::size_t number) {
    const std::string_view text = trimBlanks(line);
    if (isSettingsHeader(text)) {
        inSettings_ = true;
        settingsHeader_ = settingsHeader_ == 0 ? number : settingsHeader_;
    } else if (const DeviceFile* const file = fileOfHeader(text)) {
        begin(*file, number);
    } else if (inSettings_) {
        if (!takeSettingLine(text, sections_.back()) && !text.empty())
            remarks_.add({FileRemarkKind::StrayLine, {}, settingsSection, number});
    } else if (!text.empty()) {
        copy(text, number);
    }
    text_.see(line, number, section());
}

std::string_view Parting::section() const {
    const DeviceFile* const file = sections_.back().file;
    if (inSettings_)
        return settingsSection;
    return file == nullptr ? std::string_view() : file->sectionName;
}

void Parting::begin(const DeviceFile& file, std::size_t number) {
    inSettings_ = false;
    if (lastSectionOf(file, sections_) != nullptr)
        remarks_.add({FileRemarkKind::DoubleSection, {}, file.sectionName, number});
    sections_.emplace_back();
    sections_.back().file = &file;
    sections_.back().header = number;
}

void Parting::copy(std::string_view line, std::size_t number) {
    if (sections_.back().file == nullptr) {
        stray_.line = stray_.count++ == 0 ? number : stray_.line;
        return;
    }
    constexpr std::size_t large = std::size_t{1} << 20;
    std::string& copied = sections_.back().lines;
    if (copied.size() > large && copied.capacity() < size_)
        copied.reserve(size_);
    sections_.back().append(line, number);
}

void Parting::remarkSettings() {
    const bool hasAddress =
        std::ranges::any_of(sections_, [](const auto& section) { return section.IP.has_value(); });
    if (!hasAddress)
        remarks_.add({FileRemarkKind::MissingItems, {}, settingsSection, settingsHeader_, 1, "IP"});
}

ProjectFileOutline Parting::finish(std::size_t lines) {
    const bool hasHeader = settingsHeader_ > 0 || sections_.size() > 1;
    if (!hasHeader)
        remarks_.add({FileRemarkKind::NotAProject, {}, {}});
    else if (stray_.count > 0)
        remarks_.add(stray_);
    for (const DeviceFile* const file : deviceFiles)
        if (file->readSection != nullptr && lastSectionOf(*file, sections_) == nullptr)
            remarks_.add({FileRemarkKind::MissingSection, {}, file->sectionName});
    remarkSettings();
    return {lines, inSettings_};
}

void writeDeviceFile(const ProjectFileSection& section, const std::string& path, const FileContext& context,
                     Project& project) {
    try {
        FileSink sink = createDeviceFile(path, context);
        sink.write(section.lines);
        takeSettings(section, project);
        sink.close();
    } catch (const OpenFailure&) {
        throw SectionFailure("Unable to open " + path);
    } catch (const WriteFailure&) {
        throw SectionFailure("exception ooccured when writing data to " + path);
    }
}

} // namespace

bool isSectionHeader(std::string_view line) {
    return isSettingsHeader(line) || fileOfHeader(line) != nullptr;
}

void ProjectFileSection::append(std::string_view line, std::size_t number) {
    lines.append(line).append(lineEnd);
    ++count_;
    if (runs_.empty() || number - runs_.back().inFile != count_ - runs_.back().first)
        runs_.push_back({count_, number});
}

std::size_t ProjectFileSection::lineInFile(std::size_t line) const {
    const auto after = std::ranges::upper_bound(runs_, line, {}, &Run::first);
    if (after == runs_.begin())
        return header;
    const Run& run = *std::prev(after);
    return run.inFile + (line - run.first);
}

ProjectFileOutline takeApart(ByteSource& source, std::vector<ProjectFileSection>& sections, std::size_t size,
                             FileRemarks* remarks) {
    FileRemarks unwanted;
    Parting parting(sections, size, remarks != nullptr ? *remarks : unwanted);
    LineReader lines(source);
    try {
        for (std::string_view line; lines.next(line);)
            parting.take(line, lines.number());
    } catch (const ReadFailure&) {
        parting.finish(lines.number());
        throw;
    }
    if (lines.skippedMark())
        parting.remarkMark();
    return parting.finish(lines.number());
}

void takeSettings(const ProjectFileSection& section, Project& project) {
    if (section.SerialPort)
        project.SerialPort = *section.SerialPort;
    if (section.IP)
        project.IP = *section.IP;
}

const ProjectFileSection* lastSectionOf(const DeviceFile& file,
                                        const std::vector<ProjectFileSection>& sections) {
    const auto found =
        std::find_if(sections.rbegin(), sections.rend(),
                     [&file](const ProjectFileSection& section) { return section.file == &file; });
    return found == sections.rend() ? nullptr : &*found;
}

void writeDeviceFiles(const std::vector<ProjectFileSection>& sections, const std::string& folder,
                      const FileContext& context, Project& project) {
    for (const ProjectFileSection& section : sections) {
        if (section.file == nullptr)
            takeSettings(section, project);
        else
            writeDeviceFile(section, context.paths.join(folder, section.file->sectionName), context, project);
    }
}

} // namespace orvista::DocMgrModule
