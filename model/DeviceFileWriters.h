#pragma once

#include "model/FileContext.h"
#include "model/Files.h"
#include "model/Project.h"

#include <string>

/// Writers of the device files. The ones on sinks throw WriteFailure and leave closing to the caller; the
/// ones on paths (UTF-8) show "unable to open " and the path on any failure and return false; what was
/// written so far stays on disk.
namespace orvista::DocMgrModule {

void writeModbusAdr(ByteSink& sink, const Project& project);
void writeStdMsg(ByteSink& sink, const Project& project);
void writeAltMsg(ByteSink& sink, const Project& project);
void writeIlmVar(ByteSink& sink, const Project& project);
/// As it stands in the project file: with an empty line before the ENDVAR of every Boolean block.
void writeIlmVarSection(ByteSink& sink, const Project& project);
void writeDefaultPls(ByteSink& sink, const Project& project);

/// The device file at `path` (UTF-8), created or truncated, whatever the case of its name on disk. A link
/// counts as a file that cannot be created: what it leads to belongs to somebody, and it may be the project
/// file. A file with several names gets one of its own, and the others keep their bytes. \throws OpenFailure
FileSink createDeviceFile(const std::string& path, const FileContext& context);

bool WriteModbusAdr(const std::string& path, const Project& project, const FileContext& context);
bool WriteStdMsg(const std::string& path, const Project& project, const FileContext& context);
bool WriteAltMsg(const std::string& path, const Project& project, const FileContext& context);
bool WriteIlmVar(const std::string& path, const Project& project, const FileContext& context);
/// The play list is always the same, whatever the project holds.
bool WriteDefaultPls(const std::string& path, const Project& project, const FileContext& context);

} // namespace orvista::DocMgrModule
