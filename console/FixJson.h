#pragma once

#include "check/Finding.h"
#include "check/Fix.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

/// Findings and what mends them, as JSON. Texts of the device become UTF-8; columns and lengths count its
/// bytes.
namespace orvista::console {

nlohmann::ordered_json findingObject(const std::string& project, const Finding& finding);
/// "caption" and "edits"
nlohmann::ordered_json fixObject(const Fix& fix);

} // namespace orvista::console
