#pragma once

#include "sheets/PlcVariables.h"
#include "sheets/Template.h"

#include <span>
#include <string>
#include <string_view>

namespace orvista {

/// What a template of an address list may name: project, file, display, device, fingerprint, time, release
/// and prefix; the lists items, float, boolean, emergency, regular, coils and not_addressable; and in each
/// row the columns, variable, initial, description, byte_order, used, first and last, its kind as a section,
/// and every text as a JSON string with "_json" after its name. \param variables of the rows, in their order
TemplateValues addressTemplateValues(std::span<const AddressRow> rows, const PlcVariables& variables,
                                     const Project& project, const AddressHead& head);

} // namespace orvista
