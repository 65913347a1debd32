#include "model/ProjectFileSections.h"

#include "model/Text.h"

#include <algorithm>
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

void takeSettingLine(std::string_view line, ProjectFileSection& section) {
    constexpr std::string_view serialPort = "SERIALPORT";
    constexpr std::string_view ip = "IP";
    if (startsWithIgnoringCase(line, serialPort))
        section.SerialPort = settingBehind(line, serialPort);
    else if (startsWithIgnoringCase(line, ip))
        section.IP = settingBehind(line, ip);
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

void takeApart(ByteSource& source, std::vector<ProjectFileSection>& sections, std::size_t size) {
    constexpr std::size_t large = std::size_t{1} << 20;
    sections.emplace_back();
    bool inSettings = false;
    LineReader lines(source);
    for (std::string_view line; lines.next(line);) {
        const std::string_view text = trimBlanks(line);
        if (isSettingsHeader(text)) {
            inSettings = true;
        } else if (const DeviceFile* const file = fileOfHeader(text)) {
            inSettings = false;
            sections.push_back({file, {}, {}, {}});
        } else if (inSettings) {
            takeSettingLine(text, sections.back());
        } else if (!text.empty() && sections.back().file != nullptr) {
            std::string& copied = sections.back().lines;
            if (copied.size() > large && copied.capacity() < size)
                copied.reserve(size);
            copied.append(text).append(lineEnd);
        }
    }
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
