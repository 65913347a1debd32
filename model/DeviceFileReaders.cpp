#include "model/DeviceFileReaders.h"

#include "model/DeviceFiles.h"
#include "model/FolderLookup.h"
#include "model/ItemKind.h"
#include "model/Numbers.h"
#include "model/ReservedLines.h"
#include "model/Text.h"

#include <algorithm>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>

namespace orvista::ConfigModule {

namespace {

std::string_view from(std::string_view line, std::size_t position) {
    return line.substr(std::min(position, line.size()));
}

/// The address on a line of the address map. One character after the keyword is skipped, whatever it is.
std::int32_t addressBehind(std::string_view line, std::string_view keyword) {
    const std::string_view value = trimBlanks(from(line, keyword.size() + 1));
    return toWhole<std::int32_t>(leadingNumber(value, InnerBlanks::Skipped));
}

void takeAddressLine(std::string_view line, Project& project) {
    constexpr std::string_view analogInput = "ANALOGINPUT";
    constexpr std::string_view digitalInput = "DIGITALINPUT";
    constexpr std::string_view alertMessage = "ALERTMESSAGE";
    if (startsWithIgnoringCase(line, analogInput)) {
        project.AnalogInput = addressBehind(line, analogInput);
    } else if (startsWithIgnoringCase(line, digitalInput)) {
        project.DigitalInput = addressBehind(line, digitalInput);
    } else if (startsWithIgnoringCase(line, alertMessage)) {
        const std::int32_t start = addressBehind(line, alertMessage);
        const auto regular = toWhole<std::int32_t>(static_cast<double>(regularStartAfter(start)));
        project.AlertMessage = start;
        project.RegularMessage = regular;
    }
}

/// Messages fill the rows in the order in which they stand in the file. Neither name nor text is reset at
/// ENDMSG: what follows it is appended, and another ENDMSG stores the longer text in the next row.
void readMessages(ByteSource& source, std::span<std::string> table) {
    LineReader lines(source);
    std::string_view line;
    std::string name;
    std::string text;
    for (std::size_t count = 0; count < table.size() && lines.next(line);) {
        const std::string_view trimmed = trimBlanks(line);
        if (startsWithIgnoringCase(trimmed, messageStart)) {
            name = trimBlanks(from(trimmed, messageStart.size() + 1));
            text.clear();
        } else if (startsWithIgnoringCase(trimmed, messageEnd) && !text.empty()) {
            table[count++] = text;
        } else if (!name.empty()) {
            text.append(trimmed).append(lineEnd);
        }
    }
}

/// The variable block that is being read. Its fields are also set by lines outside a block.
class PendingVariable {
public:
    void take(std::string_view line, Project& project);

private:
    void begin(std::string_view name);
    void takeField(const std::string& key, std::string_view value);
    void apply(Project& project) const;
    std::optional<std::size_t> row(const ItemKind& kind, const Project& project) const;

    std::string name_;
    std::string type_;
    std::string address_;
    std::string default_;
    std::string width_;
    std::string precision_;
    std::string on_;
    std::string off_;
};

void PendingVariable::take(std::string_view line, Project& project) {
    if (!name_.empty() && equalsIgnoringCase(line, "ENDVAR")) {
        apply(project);
        name_.clear();
        return;
    }
    const auto blank = line.find(' ');
    if (blank == std::string_view::npos)
        return;
    const std::string key = upperAscii(line.substr(0, blank));
    const std::string_view value = trimBlanks(line.substr(blank));
    if (key == "DEFVAR")
        begin(value);
    else
        takeField(key, value);
}

void PendingVariable::begin(std::string_view name) {
    *this = {};
    const FloatVariable defaults;
    name_ = name;
    width_ = defaults.width;
    precision_ = defaults.precision;
}

void PendingVariable::takeField(const std::string& key, std::string_view value) {
    if (key == "DEFAULT") {
        default_ = value;
    } else if (key == "TYPE") {
        type_ = value;
    } else if (key == "ADDRESS") {
        address_ = value;
    } else if (key == "WIDTH") {
        width_ = value;
    } else if (key == "PRECISION") {
        precision_ = value;
    } else if ((key == "ON" || key == "OFF") && value.size() >= 3) {
        // The quotes go by position, whatever the first and last character are.
        (key == "ON" ? on_ : off_) = value.substr(1, value.size() - 2);
    }
}

std::optional<std::size_t> PendingVariable::row(const ItemKind& kind, const Project& project) const {
    try {
        const double address = roundHalfToEven(leadingNumber(address_, InnerBlanks::Skipped));
        const double row = roundHalfToEven((address - project.*kind.start) / kind.addressesPerItem);
        if (row >= 0 && row < static_cast<double>(kind.count))
            return static_cast<std::size_t>(row);
    } catch (const Overflow&) {
        // An address beyond every number is beyond the table, too.
    }
    return std::nullopt;
}

void PendingVariable::apply(Project& project) const {
    const auto defaultOr = [this](const std::string& fallback) {
        return default_.empty() ? fallback : default_;
    };
    if (equalsIgnoringCase(type_, "FLOAT")) {
        if (const auto index = row(floatVariables, project)) {
            FloatVariable& variable = project.RegVar[*index];
            variable.defaultValue = defaultOr(FloatVariable{}.defaultValue);
            variable.precision = precision_;
            variable.width = width_;
        }
    } else if (equalsIgnoringCase(type_, "BIT")) {
        if (const auto index = row(booleanVariables, project)) {
            BooleanVariable& variable = project.CoilVar[*index];
            variable.defaultValue = defaultOr(BooleanVariable{}.defaultValue);
            variable.onText = on_;
            variable.offText = off_;
        }
    }
}

void readFile(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
              void (*read)(ByteSource&, Project&)) {
    try {
        FileSource source(deviceFileOnDisk(context.paths, path));
        readFrom(source, project, context, read);
    } catch (const OpenFailure&) {
        context.messages.show(MessageIcon::None, "Unable to open " + path);
    }
}

} // namespace

void readModbusAdr(ByteSource& source, Project& project) {
    project.ResetAddressMap();
    LineReader lines(source);
    for (std::string_view line; lines.next(line);)
        takeAddressLine(trimBlanks(line), project);
}

void readIlmVar(ByteSource& source, Project& project) {
    project.ResetVariables();
    LineReader lines(source);
    PendingVariable pending;
    for (std::string_view line; lines.next(line);)
        pending.take(trimBlanks(line), project);
}

void readStdMsg(ByteSource& source, Project& project) {
    readMessages(source, project.STDMSG);
}

void readAltMsg(ByteSource& source, Project& project) {
    readMessages(source, project.ALTMSG);
}

void readFrom(ByteSource& source, Project& project, const DocMgrModule::FileContext& context,
              void (*read)(ByteSource&, Project&)) {
    try {
        read(source, project);
    } catch (const std::runtime_error&) { // ReadFailure, Overflow
        context.messages.show(MessageIcon::None, "exception ooccured when reading data");
    }
}

void ReadModbusAdr(const std::string& path, Project& project, const DocMgrModule::FileContext& context) {
    readFile(path, project, context, readModbusAdr);
}

void ReadIlmVar(const std::string& path, Project& project, const DocMgrModule::FileContext& context) {
    readFile(path, project, context, readIlmVar);
}

void ReadStdMsg(const std::string& path, Project& project, const DocMgrModule::FileContext& context) {
    readFile(path, project, context, readStdMsg);
}

void ReadAltMsg(const std::string& path, Project& project, const DocMgrModule::FileContext& context) {
    readFile(path, project, context, readAltMsg);
}

void readDeviceFiles(const std::string& folder, Project& project, const DocMgrModule::FileContext& context,
                     std::string_view addressMapName) {
    for (const DeviceFile* const file : deviceFiles) {
        if (file->Read != nullptr)
            file->Read(context.paths.join(folder, file == &modbusAdrFile ? addressMapName : file->name),
                       project, context);
    }
}

} // namespace orvista::ConfigModule
