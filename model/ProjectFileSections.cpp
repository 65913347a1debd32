#include "model/ProjectFileSections.h"

#include "model/FolderLookup.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <system_error>

namespace orvista::DocMgrModule {

namespace {

struct Section {
    std::string_view header;
    std::string_view fileName; ///< as messages show it; on disk it is found whatever its case
};

constexpr std::array<Section, 4> sections = {{{"[MODBUS.ADR]", "Modbus.adr"},
                                              {"[ILMVAR.DEF]", "ilmVar.def"},
                                              {"[STDMSG.ILM]", "StdMsg.ilm"},
                                              {"[ALTMSG.ILM]", "AltMsg.ilm"}}};

/// The value on a settings line. One character after the keyword is skipped, whatever it is.
std::string_view settingBehind(std::string_view line, std::string_view keyword) {
    return trimLeadingBlanks(line.substr(std::min(keyword.size() + 1, line.size())));
}

class SectionSplitter {
public:
    SectionSplitter(const std::string& folder, const PathRules& paths, Project& project)
        : folder_(folder), paths_(paths), project_(project) {}

    void take(std::string_view line);
    void closeFile();

private:
    void openFile(std::string_view fileName);
    void takeSetting(std::string_view line);
    void copyLine(std::string_view line);

    template <typename Write>
    void write(Write action) {
        try {
            action();
        } catch (const WriteFailure&) {
            file_.reset();
            throw SectionFailure("exception ooccured when writing data to " + path_);
        }
    }

    const std::string& folder_;
    const PathRules& paths_;
    Project& project_;
    bool inSettings_ = false;
    std::optional<FileSink> file_;
    std::string path_;
};

void SectionSplitter::take(std::string_view line) {
    if (equalsIgnoringCase(line, "[CONFIG]")) {
        inSettings_ = true; // an open device file stays open
        return;
    }
    const auto section = std::find_if(sections.begin(), sections.end(), [line](const Section& candidate) {
        return equalsIgnoringCase(line, candidate.header);
    });
    if (section != sections.end())
        openFile(section->fileName);
    else if (inSettings_)
        takeSetting(line);
    else
        copyLine(line);
}

void SectionSplitter::openFile(std::string_view fileName) {
    inSettings_ = false;
    closeFile();
    path_ = paths_.join(folder_, fileName);
    try {
        file_.emplace(deviceFileOnDisk(paths_, path_));
    } catch (const OpenFailure&) {
        throw SectionFailure("Unable to open " + path_);
    }
}

void SectionSplitter::closeFile() {
    if (!file_)
        return;
    write([this] { file_->close(); });
    file_.reset();
}

void SectionSplitter::takeSetting(std::string_view line) {
    constexpr std::string_view serialPort = "SERIALPORT";
    constexpr std::string_view ip = "IP";
    if (startsWithIgnoringCase(line, serialPort))
        project_.SerialPort = settingBehind(line, serialPort);
    else if (startsWithIgnoringCase(line, ip))
        project_.IP = settingBehind(line, ip);
}

void SectionSplitter::copyLine(std::string_view line) {
    if (line.empty() || !file_)
        return;
    write([&] {
        file_->write(line);
        file_->write(lineEnd);
    });
}

} // namespace

void splitIntoDeviceFiles(ByteSource& source, const std::string& folder, const PathRules& paths,
                          Project& project) {
    SectionSplitter splitter(folder, paths, project);
    LineReader lines(source);
    for (std::string line; lines.next(line);)
        splitter.take(trimBlanks(line));
    splitter.closeFile();
}

} // namespace orvista::DocMgrModule
