#include "model/DeviceFileReaders.h"

#include "model/BlockRemarks.h"
#include "model/DeviceFiles.h"
#include "model/Files.h"
#include "model/FolderLookup.h"
#include "model/Item.h"
#include "model/Lines.h"
#include "model/Numbers.h"
#include "model/ReadingRemarks.h"
#include "model/ReservedLines.h"
#include "model/Text.h"
#include "model/TextLines.h"

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
std::string_view addressBehind(std::string_view line, std::string_view keyword) {
    return trimBlanks(from(line, keyword.size() + 1));
}

std::int32_t addressOf(std::string_view text) {
    return toWhole<std::int32_t>(leadingNumber(text, InnerBlanks::Skipped));
}

void takeAddress(std::size_t which, std::string_view text, Project& project) {
    const std::int32_t start = addressOf(text);
    if (which == 0) {
        project.AnalogInput = start;
    } else if (which == 1) {
        project.DigitalInput = start;
    } else {
        const auto regular = toWhole<std::int32_t>(static_cast<double>(regularStartAfter(start)));
        project.AlertMessage = start;
        project.RegularMessage = regular;
    }
}

void takeAddressLine(std::string_view line, std::size_t number, Project& project, AddressRemarks& remarks) {
    const auto& names = AddressRemarks::names;
    const auto name = std::ranges::find_if(
        names, [line](std::string_view keyword) { return startsWithIgnoringCase(line, keyword); });
    if (name == names.end()) {
        remarks.pass(line, number);
        return;
    }
    const auto which = static_cast<std::size_t>(name - names.begin());
    const std::string_view text = addressBehind(line, *name);
    takeAddress(which, text, project);
    remarks.take(which, beginsWithNumber(text));
}

/// The lines of a file one by one, trimmed of blanks; what they are as text is told by the way.
class TrimmedLines {
public:
    TrimmedLines(ByteSource& source, TableReading& reading)
        : lines_(source), text_(reading.remarks), reading_(reading) {
        reading.isRead = true;
    }
    bool next(std::string_view& line) {
        if (!lines_.next(line))
            return false;
        reading_.lines = lines_.number();
        text_.see(line, reading_.lines);
        if (reading_.lines == 1 && lines_.skippedMark())
            reading_.remarks.add({FileRemarkKind::Utf8Mark, {}, {}, 1});
        line = trimBlanks(line);
        return true;
    }
    std::size_t number() const { return reading_.lines; }

private:
    LineReader lines_;
    TextLines text_;
    TableReading& reading_;
};

/// What follows the last message that has a row is read for the remarks alone, so failing to is none.
void passRest(TrimmedLines& lines, MessageRemarks& remarks) {
    try {
        for (std::string_view line; lines.next(line);)
            remarks.passBehind(line, lines.number());
    } catch (const ReadFailure&) {
        return;
    }
}

/// Messages fill the rows in the order in which they stand in the file. Neither name nor text is reset at
/// ENDMSG: what follows it is appended, and another ENDMSG stores the longer text in the next row.
void readMessages(ByteSource& source, Kind kind, std::span<std::string> table, TableReading* wanted) {
    TableReading unwanted;
    TableReading& reading = wanted != nullptr ? *wanted : unwanted;
    TrimmedLines lines(source, reading);
    MessageRemarks remarks(kind, reading);
    std::string_view line;
    std::string name;
    std::string text;
    std::size_t count = 0;
    while (count < table.size() && lines.next(line)) {
        if (startsWithIgnoringCase(line, messageStart)) {
            name = trimBlanks(from(line, messageStart.size() + 1));
            text.clear();
            remarks.begin(name, lines.number());
        } else if (startsWithIgnoringCase(line, messageEnd) && !text.empty()) {
            remarks.store(count, lines.number());
            table[count++] = text;
        } else {
            remarks.pass(line, lines.number());
            if (!name.empty())
                text.append(line).append(lineEnd);
        }
    }
    if (wanted != nullptr && count == table.size())
        passRest(lines, remarks);
    remarks.finish(count);
}

/// The variable block that is being read. Its fields are also set by lines outside a block.
class PendingVariable {
public:
    void take(std::string_view line, std::size_t number, Project& project, VariableRemarks& remarks);

private:
    void begin(std::string_view name);
    /// False for a line that sets nothing.
    bool takeField(const std::string& key, std::string_view value);
    void apply(Project& project, VariableRemarks& remarks) const;
    std::optional<std::size_t> row(const KindRow& kind, const Project& project) const;
    bool isAt(std::int64_t address) const;

    std::string name_;
    std::string type_;
    std::string address_;
    std::string default_;
    std::string width_;
    std::string precision_;
    std::string on_;
    std::string off_;
};

void PendingVariable::take(std::string_view line, std::size_t number, Project& project,
                           VariableRemarks& remarks) {
    if (!name_.empty() && equalsIgnoringCase(line, "ENDVAR")) {
        apply(project, remarks);
        name_.clear();
        return;
    }
    const auto blank = std::min(line.find(' '), line.size());
    const std::string key = upperAscii(line.substr(0, blank));
    const std::string_view value = trimBlanks(line.substr(blank));
    if (key == "DEFVAR" && !value.empty()) {
        begin(value);
        remarks.begin(name_, number);
    } else if (!value.empty() && takeField(key, value)) {
        remarks.takeField(number);
    } else {
        remarks.pass(line, number);
    }
}

void PendingVariable::begin(std::string_view name) {
    *this = {};
    const FloatVariable defaults;
    name_ = name;
    width_ = defaults.width;
    precision_ = defaults.precision;
}

bool PendingVariable::takeField(const std::string& key, std::string_view value) {
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
    } else {
        return false;
    }
    return true;
}

std::optional<std::size_t> PendingVariable::row(const KindRow& kind, const Project& project) const {
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

bool PendingVariable::isAt(std::int64_t address) const {
    return leadingNumber(address_, InnerBlanks::Skipped) == static_cast<double>(address);
}

void PendingVariable::apply(Project& project, VariableRemarks& remarks) const {
    const bool isFloat = equalsIgnoringCase(type_, "FLOAT");
    if (!isFloat && !equalsIgnoringCase(type_, "BIT")) {
        remarks.endWithoutType();
        return;
    }
    const Kind kind = isFloat ? Kind::Float : Kind::Boolean;
    const auto index = row(rowOf(kind), project);
    if (!index) {
        remarks.endWithoutRow();
        return;
    }
    const auto defaultOr = [this](const std::string& fallback) {
        return default_.empty() ? fallback : default_;
    };
    if (isFloat) {
        FloatVariable& variable = project.RegVar[*index];
        variable.defaultValue = defaultOr(FloatVariable{}.defaultValue);
        variable.precision = precision_;
        variable.width = width_;
    } else {
        BooleanVariable& variable = project.CoilVar[*index];
        variable.defaultValue = defaultOr(BooleanVariable{}.defaultValue);
        variable.onText = on_;
        variable.offText = off_;
    }
    const Item item(kind, *index);
    remarks.store(item, isAt(addressOf(project, item)));
}

void readFile(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
              ReadTable read, TableReading* reading) {
    try {
        FileSource source(deviceFileOnDisk(context.paths, path));
        readFrom(source, project, context, read, reading);
    } catch (const OpenFailure&) {
        context.messages.show(MessageIcon::None, "Unable to open " + path);
    }
}

} // namespace

void readModbusAdr(ByteSource& source, Project& project, TableReading* wanted) {
    project.ResetAddressMap();
    TableReading unwanted;
    TableReading& reading = wanted != nullptr ? *wanted : unwanted;
    TrimmedLines lines(source, reading);
    AddressRemarks remarks(reading);
    try {
        for (std::string_view line; lines.next(line);)
            takeAddressLine(line, lines.number(), project, remarks);
    } catch (const Overflow&) { // ends the reading
        remarks.finish();
        throw;
    }
    remarks.finish();
}

void readIlmVar(ByteSource& source, Project& project, TableReading* wanted) {
    project.ResetVariables();
    TableReading unwanted;
    TableReading& reading = wanted != nullptr ? *wanted : unwanted;
    TrimmedLines lines(source, reading);
    VariableRemarks remarks(reading);
    PendingVariable pending;
    for (std::string_view line; lines.next(line);)
        pending.take(line, lines.number(), project, remarks);
    remarks.finish();
}

void readStdMsg(ByteSource& source, Project& project, TableReading* reading) {
    readMessages(source, Kind::Regular, project.STDMSG, reading);
}

void readAltMsg(ByteSource& source, Project& project, TableReading* reading) {
    readMessages(source, Kind::Emergency, project.ALTMSG, reading);
}

void readFrom(ByteSource& source, Project& project, const DocMgrModule::FileContext& context, ReadTable read,
              TableReading* reading) {
    try {
        read(source, project, reading);
    } catch (const std::runtime_error&) { // ReadFailure, Overflow
        context.messages.show(MessageIcon::None, "exception ooccured when reading data");
    }
}

void ReadModbusAdr(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
                   TableReading* reading) {
    readFile(path, project, context, readModbusAdr, reading);
}

void ReadIlmVar(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
                TableReading* reading) {
    readFile(path, project, context, readIlmVar, reading);
}

void ReadStdMsg(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
                TableReading* reading) {
    readFile(path, project, context, readStdMsg, reading);
}

void ReadAltMsg(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
                TableReading* reading) {
    readFile(path, project, context, readAltMsg, reading);
}

void readDeviceFiles(const std::string& folder, Project& project, const DocMgrModule::FileContext& context,
                     std::string_view addressMapName, FileRemarks* remarks) {
    for (const DeviceFile* const file : deviceFiles) {
        if (file->Read == nullptr)
            continue;
        TableReading reading;
        file->Read(context.paths.join(folder, file == &modbusAdrFile ? addressMapName : file->name), project,
                   context, remarks != nullptr ? &reading : nullptr);
        if (remarks != nullptr)
            addRemarks(*file, reading, *remarks);
    }
    if (remarks != nullptr)
        remarks->sort();
}

} // namespace orvista::ConfigModule
