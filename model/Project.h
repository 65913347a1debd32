#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace orvista {

inline constexpr std::size_t floatVariableCount = 64;
inline constexpr std::size_t booleanVariableCount = 32;
inline constexpr std::size_t regularMessageCount = 40;
inline constexpr std::size_t emergencyMessageCount = 20;

/// The one-command script that blanks the display: what every unused message holds.
inline constexpr const char* clearScript = "CLEAR";

/// Display settings of one float variable (two holding registers). All texts are as typed or read.
struct FloatVariable {
    std::string name; ///< "RegVar1" to "RegVar64", fixed by position
    std::string defaultValue = "0.0";
    std::string width = "7";
    std::string precision = "3";
    bool operator==(const FloatVariable&) const = default;
};

/// Display settings of one Boolean variable (one coil).
struct BooleanVariable {
    std::string name; ///< "CoilVar1" to "CoilVar32", fixed by position
    std::string defaultValue = "0";
    std::string onText = "ON";
    std::string offText = "OFF";
    bool operator==(const BooleanVariable&) const = default;
};

/// The one open device configuration. Its tables have fixed sizes; an unused row holds defaults. Texts that
/// go to the device are Windows-1252 bytes; ProjPath and ProjName are UTF-8.
struct Project {
    Project();

    std::string SerialPort;
    std::string IP;

    std::string ProjPath; ///< folder without a trailing separator
    std::string ProjName; ///< without extension; empty for the unnamed project
    bool modified = false;

    std::int32_t AnalogInput = 0;    ///< first holding register of the float variables
    std::int32_t DigitalInput = 0;   ///< first coil of the Boolean variables
    std::int32_t AlertMessage = 0;   ///< first of the 20 emergency-message coils
    std::int32_t RegularMessage = 0; ///< first of the 40 regular-message coils

    std::array<FloatVariable, floatVariableCount> RegVar;
    std::array<BooleanVariable, booleanVariableCount> CoilVar;
    std::array<std::string, regularMessageCount> STDMSG;
    std::array<std::string, emergencyMessageCount> ALTMSG;

    /// Addresses 100, 100, 300 and 320.
    void ResetAddressMap();
    /// All 96 variable records, names included.
    void ResetVariables();
    /// All 60 messages become "CLEAR".
    void ClearMessages();
    /// "COM1" and the factory address of the device.
    void resetSystemSettings();
};

/// The regular-message block follows the 20 emergency coils directly.
std::int64_t regularStartAfter(std::int64_t emergencyStart);

} // namespace orvista
