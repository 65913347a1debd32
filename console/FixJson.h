#pragma once

#include "check/Finding.h"
#include "check/Fix.h"
#include "model/JsonValue.h"

#include <string>

/// Findings and what mends them, as JSON. Texts of the device become UTF-8; columns and lengths count its
/// bytes.
namespace orvista::console {

JsonValue::Object findingObject(const std::string& project, const Finding& finding);
/// "caption" and "edits"
JsonValue::Object fixObject(const Fix& fix);

} // namespace orvista::console
