#pragma once

#include "model/DeviceFileWriters.h"
#include "model/Files.h"
#include "model/Project.h"

#include <string>

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

} // namespace orvista::ConfigModule
