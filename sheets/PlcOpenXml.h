#pragma once

#include "sheets/PlcVariables.h"

#include <string>

namespace orvista {

/// The global variables of an address list as PLCopen XML (TC6 2.01), without a program. \returns UTF-8
std::string plcOpenXml(const PlcVariables& variables, const Project& project, const AddressHead& head);

} // namespace orvista
