#pragma once

#include "model/Bytes.h"
#include "model/DeviceFileReaders.h"
#include "model/DeviceFileWriters.h"

#include <array>
#include <string>
#include <string_view>

namespace orvista {

/// One of the plain-text files that the device reads.
struct DeviceFile {
    std::string_view name; ///< in the project folder and on the device
    /// In brackets the header of its section in the project file, whatever the case; in this spelling it
    /// stands in messages about taking the project file apart. Empty where it has no section.
    std::string_view sectionName;
    void (*write)(ByteSink& sink, const Project& project);
    void (*writeSection)(ByteSink& sink, const Project& project); ///< null without a section
    ConfigModule::ReadTable readSection;                          ///< null for a file that is never read
    bool (*Write)(const std::string& path, const Project& project, const DocMgrModule::FileContext& context);
    void (*Read)(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
                 TableReading* reading);
};

inline constexpr DeviceFile modbusAdrFile{
    "modbus.adr",
    "Modbus.adr",
    DocMgrModule::writeModbusAdr,
    DocMgrModule::writeModbusAdr,
    ConfigModule::readModbusAdr,
    DocMgrModule::WriteModbusAdr,
    ConfigModule::ReadModbusAdr,
};
inline constexpr DeviceFile ilmVarFile{
    "ilmvar.def",
    "ilmVar.def",
    DocMgrModule::writeIlmVar,
    DocMgrModule::writeIlmVarSection,
    ConfigModule::readIlmVar,
    DocMgrModule::WriteIlmVar,
    ConfigModule::ReadIlmVar,
};
inline constexpr DeviceFile stdMsgFile{
    "stdmsg.ilm",
    "StdMsg.ilm",
    DocMgrModule::writeStdMsg,
    DocMgrModule::writeStdMsg,
    ConfigModule::readStdMsg,
    DocMgrModule::WriteStdMsg,
    ConfigModule::ReadStdMsg,
};
inline constexpr DeviceFile altMsgFile{
    "altmsg.ilm",
    "AltMsg.ilm",
    DocMgrModule::writeAltMsg,
    DocMgrModule::writeAltMsg,
    ConfigModule::readAltMsg,
    DocMgrModule::WriteAltMsg,
    ConfigModule::ReadAltMsg,
};
inline constexpr DeviceFile defaultPlsFile{
    "default.pls", {}, DocMgrModule::writeDefaultPls, nullptr, nullptr, DocMgrModule::WriteDefaultPls,
    nullptr,
};

/// In the order in which they are read and sent. The address map comes before the variables, which are placed
/// by the addresses that it holds.
inline constexpr std::array deviceFiles{&modbusAdrFile, &ilmVarFile, &stdMsgFile, &altMsgFile,
                                        &defaultPlsFile};

/// In the order in which a save writes them, and their sections into the project file.
inline constexpr std::array savedDeviceFiles{&modbusAdrFile, &stdMsgFile, &altMsgFile, &ilmVarFile,
                                             &defaultPlsFile};

} // namespace orvista
