#include "model/DeviceFileWriters.h"

#include "model/FileReplacing.h"
#include "model/FolderLookup.h"
#include "model/Item.h"
#include "model/Lines.h"
#include "model/Numbers.h"
#include "model/ReservedLines.h"
#include "model/SystemFile.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <span>
#include <string_view>
#include <system_error>

namespace orvista::DocMgrModule {

namespace {

namespace fs = std::filesystem;

void writeLine(ByteSink& sink, std::string_view text) {
    sink.write(text);
    sink.write(lineEnd);
}

/// A key with the blanks that bring its value to the file's column.
void writeValue(ByteSink& sink, std::string_view keyAndBlanks, std::string_view value) {
    sink.write(keyAndBlanks);
    writeLine(sink, value);
}

void writeQuoted(ByteSink& sink, std::string_view keyAndBlanks, std::string_view value) {
    sink.write(keyAndBlanks);
    sink.write("\"");
    sink.write(value);
    writeLine(sink, "\"");
}

void writeMessages(ByteSink& sink, Kind kind, std::span<const std::string> messages) {
    for (std::size_t i = 0; i < messages.size(); ++i) {
        writeLine(sink, std::string(messageStart) + " " + nameOf({kind, i}));
        writeLine(sink, messages[i].empty() ? std::string_view(clearScript) : messages[i]);
        writeLine(sink, messageEnd);
    }
}

void writeFloatBlock(ByteSink& sink, const Project& project, std::size_t index) {
    const FloatVariable& variable = project.RegVar[index];
    writeLine(sink, "DEFVAR " + nameOf({Kind::Float, index}));
    writeLine(sink, "    type      float");
    writeValue(sink, "    address   ", decimalText(addressOf(project, {Kind::Float, index})));
    writeValue(sink, "    default   ", variable.defaultValue);
    writeValue(sink, "    width     ", variable.width);
    writeValue(sink, "    precision ", variable.precision);
    writeLine(sink, "ENDVAR");
}

enum class BooleanBlockGap { None, EmptyLine };

void writeBooleanBlock(ByteSink& sink, const Project& project, std::size_t index, BooleanBlockGap gap) {
    const BooleanVariable& variable = project.CoilVar[index];
    writeLine(sink, "DEFVAR " + nameOf({Kind::Boolean, index}));
    writeLine(sink, "    type      bit");
    writeValue(sink, "    address   ", decimalText(addressOf(project, {Kind::Boolean, index})));
    writeValue(sink, "    default   ", variable.defaultValue);
    writeQuoted(sink, "    ON        ", variable.onText);
    writeQuoted(sink, "    OFF       ", variable.offText);
    if (gap == BooleanBlockGap::EmptyLine)
        writeLine(sink, {});
    writeLine(sink, "ENDVAR");
}

void writeVariables(ByteSink& sink, const Project& project, BooleanBlockGap gap) {
    for (std::size_t i = 0; i < project.RegVar.size(); ++i)
        writeFloatBlock(sink, project, i);
    for (std::size_t i = 0; i < project.CoilVar.size(); ++i)
        writeBooleanBlock(sink, project, i, gap);
}

bool isLink(const fs::path& path) {
    return kindOf(path) == fs::file_type::symlink;
}

/// True also where the system does not say.
bool isProjectFile(const fs::path& file, const std::string& projectFile) {
    std::error_code error;
    return !projectFile.empty() && (fs::equivalent(file, systemPath(projectFile), error) || error);
}

/// Whether writing to the file would change one of somebody's: what is behind a link belongs to them, the
/// project may link to the file, or be one of its names. Other names keep their bytes where the folder lets
/// them.
bool reachesOthers(const fs::path& file, const std::string& projectFile) {
    if (kindOf(file) == fs::file_type::not_found)
        return false;
    const bool isLinkedTo = !projectFile.empty() && isLink(systemPath(projectFile));
    return isLink(file) || (isLinkedTo && isProjectFile(file, projectFile)) ||
           (!leaveOtherNames(file) && isProjectFile(file, projectFile));
}

template <typename Write>
bool writeFile(const std::string& path, const FileContext& context, Write write) {
    try {
        FileSink sink = createDeviceFile(path, context);
        write(sink);
        if (context.durability == Durability::OnDisk)
            sink.sync();
        sink.close();
        return true;
    } catch (const std::system_error&) {
        context.messages.show(MessageIcon::Exclamation, "unable to open " + path);
        return false;
    }
}

} // namespace

void writeModbusAdr(ByteSink& sink, const Project& project) {
    writeValue(sink, "AnalogInput    ", decimalText(project.AnalogInput));
    writeValue(sink, "DigitalInput   ", decimalText(project.DigitalInput));
    writeValue(sink, "AlertMessage   ", decimalText(project.AlertMessage));
}

void writeStdMsg(ByteSink& sink, const Project& project) {
    writeMessages(sink, Kind::Regular, project.STDMSG);
}

void writeAltMsg(ByteSink& sink, const Project& project) {
    writeMessages(sink, Kind::Emergency, project.ALTMSG);
}

void writeIlmVar(ByteSink& sink, const Project& project) {
    writeVariables(sink, project, BooleanBlockGap::None);
}

void writeIlmVarSection(ByteSink& sink, const Project& project) {
    writeVariables(sink, project, BooleanBlockGap::EmptyLine);
}

void writeDefaultPls(ByteSink& sink, const Project&) {
    for (std::size_t i = 0; i < regularMessageCount; ++i)
        writeLine(sink, "DISPMSG " + nameOf({Kind::Regular, i}));
}

FileSink createDeviceFile(const std::string& path, const FileContext& context) {
    const std::string file = deviceFileOnDisk(context.paths, path);
    if (reachesOthers(systemPath(file), context.projectFile))
        throw OpenFailure(std::make_error_code(std::errc::too_many_symbolic_link_levels));
    return FileSink(file);
}

bool WriteModbusAdr(const std::string& path, const Project& project, const FileContext& context) {
    return writeFile(path, context, [&](ByteSink& sink) { writeModbusAdr(sink, project); });
}

bool WriteStdMsg(const std::string& path, const Project& project, const FileContext& context) {
    return writeFile(path, context, [&](ByteSink& sink) { writeStdMsg(sink, project); });
}

bool WriteAltMsg(const std::string& path, const Project& project, const FileContext& context) {
    return writeFile(path, context, [&](ByteSink& sink) { writeAltMsg(sink, project); });
}

bool WriteIlmVar(const std::string& path, const Project& project, const FileContext& context) {
    return writeFile(path, context, [&](ByteSink& sink) { writeIlmVar(sink, project); });
}

bool WriteDefaultPls(const std::string& path, const Project& project, const FileContext& context) {
    return writeFile(path, context, [&](ByteSink& sink) { writeDefaultPls(sink, project); });
}

} // namespace orvista::DocMgrModule
