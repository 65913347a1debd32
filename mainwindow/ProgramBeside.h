#pragma once

#include "model/ProjectLifecycle.h"

#include <string>
#include <string_view>

namespace orvista {

/// The path of another program that lies beside the editor. \param name without the system's ending
inline std::string programBeside(const DocMgrModule::ProgramEnvironment& environment, std::string_view name) {
#ifdef _WIN32
    constexpr std::string_view ending = ".exe";
#else
    constexpr std::string_view ending;
#endif
    return environment.paths.join(environment.programFolder, std::string(name).append(ending));
}

} // namespace orvista
