#pragma once

#include "link/dispatch/Com.h"

#include <optional>
#include <vector>

namespace orvista {

/// The maker's transfer control: the library's name, a point, the class's name.
inline constexpr std::wstring_view transferControlName = L"XORFTLib.xORFT";

/// The class registered under transferControlName.
std::optional<CLSID> controlClassByName();

/// The classes of that name in every registered type library of that name, newest version first. A control
/// whose name entry is missing is found this way. Looks into every type library of the system, which may
/// take a moment.
std::vector<CLSID> controlClassesByTypeLibrary();

} // namespace orvista
