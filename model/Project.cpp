#include "model/Project.h"

#include "model/Item.h"

namespace orvista {

namespace {

constexpr const char* defaultSerialPort = "COM1";
/// The device's factory setting, a private address.
constexpr const char* defaultDeviceAddress = "192.168.1.100";

constexpr std::int32_t defaultVariableStart = 100;
constexpr std::int32_t defaultEmergencyStart = 300;

} // namespace

Project::Project() {
    ResetAddressMap();
    ResetVariables();
    ClearMessages();
    resetSystemSettings();
}

void Project::ResetAddressMap() {
    DigitalInput = defaultVariableStart;
    AnalogInput = defaultVariableStart;
    AlertMessage = defaultEmergencyStart;
    RegularMessage = static_cast<std::int32_t>(regularStartAfter(defaultEmergencyStart));
}

void Project::ResetVariables() {
    for (std::size_t i = 0; i < RegVar.size(); ++i) {
        RegVar[i] = {};
        RegVar[i].name = nameOf({Kind::Float, i});
    }
    for (std::size_t i = 0; i < CoilVar.size(); ++i) {
        CoilVar[i] = {};
        CoilVar[i].name = nameOf({Kind::Boolean, i});
    }
}

void Project::ClearMessages() {
    STDMSG.fill(clearScript);
    ALTMSG.fill(clearScript);
}

void Project::resetSystemSettings() {
    SerialPort = defaultSerialPort;
    IP = defaultDeviceAddress;
}

std::int64_t regularStartAfter(std::int64_t emergencyStart) {
    return emergencyStart + static_cast<std::int64_t>(emergencyMessageCount);
}

} // namespace orvista
