#pragma once

#include <string_view>

/// Names of the five plain-text files that the device reads.
namespace orvista {

inline constexpr std::string_view modbusAdrName = "modbus.adr";
inline constexpr std::string_view stdMsgName = "stdmsg.ilm";
inline constexpr std::string_view altMsgName = "altmsg.ilm";
inline constexpr std::string_view ilmVarName = "ilmvar.def";
inline constexpr std::string_view defaultPlsName = "default.pls";

} // namespace orvista
