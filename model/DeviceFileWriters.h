#pragma once

#include "model/Files.h"
#include "model/PathRules.h"
#include "model/People.h"
#include "model/Project.h"

#include <string>

/// Writers of the device files. The ones on sinks throw WriteFailure and leave closing to the caller; the
/// ones on paths (UTF-8) show "unable to open " and the path on any failure and return false; what was
/// written so far stays on disk.
namespace orvista::DocMgrModule {

void writeModbusAdr(ByteSink& sink, const Project& project);
void writeStdMsg(ByteSink& sink, const Project& project);
void writeAltMsg(ByteSink& sink, const Project& project);
/// In the project file every Boolean block carries an empty line before its ENDVAR; "ilmvar.def" has none.
enum class BooleanBlockGap { None, EmptyLine };
void writeIlmVar(ByteSink& sink, const Project& project, BooleanBlockGap gap = BooleanBlockGap::None);
void writeDefaultPls(ByteSink& sink);

/// Where a path-based writer or reader works and whom it tells of failures.
struct FileContext {
    const PathRules& paths;
    Messages& messages;
};

bool WriteModbusAdr(const std::string& path, const Project& project, const FileContext& context);
bool WriteStdMsg(const std::string& path, const Project& project, const FileContext& context);
bool WriteAltMsg(const std::string& path, const Project& project, const FileContext& context);
bool WriteIlmVar(const std::string& path, const Project& project, const FileContext& context);
bool WriteDefaultPls(const std::string& path, const FileContext& context);

} // namespace orvista::DocMgrModule
