#pragma once

#include "model/Bytes.h"
#include "model/FileContext.h"
#include "model/FileRemarks.h"
#include "model/Project.h"

#include <string>
#include <string_view>

/// Readers of the device files, which update the model in place and keep what was read before a failure.
/// The ones on sources throw ReadFailure, and Overflow for an address that does not fit; the ones on paths
/// (UTF-8) tell the user instead. Where a `reading` is given, it learns what they did besides filling rows.
namespace orvista::ConfigModule {

void readModbusAdr(ByteSource& source, Project& project, TableReading* reading = nullptr);
void readIlmVar(ByteSource& source, Project& project, TableReading* reading = nullptr);
void readStdMsg(ByteSource& source, Project& project, TableReading* reading = nullptr);
void readAltMsg(ByteSource& source, Project& project, TableReading* reading = nullptr);

void ReadModbusAdr(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
                   TableReading* reading = nullptr);
void ReadIlmVar(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
                TableReading* reading = nullptr);
void ReadStdMsg(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
                TableReading* reading = nullptr);
void ReadAltMsg(const std::string& path, Project& project, const DocMgrModule::FileContext& context,
                TableReading* reading = nullptr);

using ReadTable = void (*)(ByteSource& source, Project& project, TableReading* reading);

/// Gives a source to one of the readers above and tells the user of a failure.
void readFrom(ByteSource& source, Project& project, const DocMgrModule::FileContext& context, ReadTable read,
              TableReading* reading = nullptr);

/// Reads the four files of `folder` (UTF-8) that are read, in their order. A message about the address map
/// names it as `addressMapName`; it is found in any case.
/// \param remarks gets what the readers met
void readDeviceFiles(const std::string& folder, Project& project, const DocMgrModule::FileContext& context,
                     std::string_view addressMapName, FileRemarks* remarks = nullptr);

} // namespace orvista::ConfigModule
