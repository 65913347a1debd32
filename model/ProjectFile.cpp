#include "model/ProjectFile.h"

#include "model/DeviceFiles.h"
#include "model/FolderLookup.h"
#include "model/ProjectFileBackup.h"
#include "model/ProjectFileSections.h"
#include "model/Text.h"

#include <system_error>

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
    const std::string file = projectFileOnDisk(context.paths, path);
    ProjectFileBackup backup(file, path + ".bak");
    try {
        FileSink sink(file);
        backup.created();
        writeProjectFile(sink, project);
        sink.close();
        backup.discard();
        return true;
    } catch (const OpenFailure&) {
        backup.restore();
        context.messages.show(MessageIcon::Exclamation, "unable to open " + path);
    } catch (const WriteFailure& failure) {
        context.messages.show(MessageIcon::None, failure.what());
    }
    return false;
}

/// Every file is tried, also after one has failed.
bool saveDeviceFiles(const std::string& folder, const Project& project, const FileContext& context) {
    const auto path = [&](std::string_view name) { return context.paths.join(folder, name); };
    bool all = WriteModbusAdr(path(modbusAdrName), project, context);
    all = WriteStdMsg(path(stdMsgName), project, context) && all;
    all = WriteAltMsg(path(altMsgName), project, context) && all;
    all = WriteIlmVar(path(ilmVarName), project, context) && all;
    return WriteDefaultPls(path(defaultPlsName), context) && all;
}

/// The address map comes first: the variable reader places records relative to it.
void readDeviceFiles(const std::string& folder, Project& project, const FileContext& context) {
    const auto path = [&](std::string_view name) { return context.paths.join(folder, name); };
    ConfigModule::ReadModbusAdr(path(modbusAdrName), project, context);
    ConfigModule::ReadIlmVar(path(ilmVarName), project, context);
    ConfigModule::ReadStdMsg(path(stdMsgName), project, context);
    ConfigModule::ReadAltMsg(path(altMsgName), project, context);
}

bool splitProjectFile(const std::string& path, const std::string& folder, Project& project,
                      const FileContext& context) {
    const auto fail = [&](const std::string& text) {
        context.messages.show(MessageIcon::None, text);
        return false;
    };
    try {
        FileSource source(projectFileOnDisk(context.paths, path));
        splitIntoDeviceFiles(source, folder, context.paths, project);
        return true;
    } catch (const SectionFailure& failure) {
        return fail(failure.what());
    } catch (const OpenFailure&) {
        return fail("Unable to open " + path);
    } catch (const ReadFailure&) {
        return fail("exception ooccured when reading data from " + path);
    }
}

} // namespace

void writeProjectFile(ByteSink& sink, const Project& project) {
    writeSettings(sink, project);
    sink.write("[MODBUS.ADR]\r\n");
    writeModbusAdr(sink, project);
    sink.write("[STDMSG.ILM]\r\n");
    writeStdMsg(sink, project);
    sink.write("[ALTMSG.ILM]\r\n");
    writeAltMsg(sink, project);
    sink.write("[ILMVAR.DEF]\r\n");
    writeIlmVar(sink, project, BooleanBlockGap::EmptyLine);
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
    if (!saveProjectFile(projectFilePath(context.paths, folder, name), project, context))
        return SaveOutcome::ProjectFileFailed;
    return saveDeviceFiles(folder, project, context) ? SaveOutcome::Saved : SaveOutcome::DeviceFileFailed;
}

bool ReadProject(const std::string& path, Project& project, const FileContext& context) {
    const auto parts = context.paths.split(path);
    const std::string folder = parts ? parts->folder : std::string{};
    if (!splitProjectFile(path, folder, project, context))
        return false;
    WriteDefaultPls(context.paths.join(folder, defaultPlsName), context);
    readDeviceFiles(folder, project, context);
    return true;
}

} // namespace orvista::DocMgrModule
