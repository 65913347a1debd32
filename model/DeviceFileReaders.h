#pragma once

#include "model/FileContext.h"
#include "model/Files.h"
#include "model/Project.h"

#include <string>
#include <string_view>

/// Readers of the device files, which update the model in place and keep what was read before a failure.
/// The ones on sources throw ReadFailure, and Overflow for an address that does not fit; the ones on paths
/// (UTF-8) tell the user instead.
namespace orvista::ConfigModule {

void readModbusAdr(ByteSource& source, Project& project);
void readIlmVar(ByteSource& source, Project& project);
void readStdMsg(ByteSource& source, Project& project);
void readAltMsg(ByteSource& source, Project& project);

void ReadModbusAdr(const std::string& path, Project& project, const DocMgrModule::FileContext& context);
void ReadIlmVar(const std::string& path, Project& project, const DocMgrModule::FileContext& context);
void ReadStdMsg(const std::string& path, Project& project, const DocMgrModule::FileContext& context);
void ReadAltMsg(const std::string& path, Project& project, const DocMgrModule::FileContext& context);

/// Gives a source to one of the readers above and tells the user of a failure.
void readFrom(ByteSource& source, Project& project, const DocMgrModule::FileContext& context,
              void (*read)(ByteSource&, Project&));

/// Reads the four files of `folder` (UTF-8) that are read, in their order. A message about the address map
/// names it as `addressMapName`; it is found in any case.
void readDeviceFiles(const std::string& folder, Project& project, const DocMgrModule::FileContext& context,
                     std::string_view addressMapName);

} // namespace orvista::ConfigModule
