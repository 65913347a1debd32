#pragma once

#include "model/Project.h"

#include <array>
#include <string>

namespace orvista {

/// What the test page asks of the device. Addresses and values are the texts of their boxes (UTF-8), as
/// typed; the first element of an array is message 1.
class TesterActions {
public:
    virtual ~TesterActions() = default;
    virtual void updateEmergencyMessages(const std::string& startAddress,
                                         const std::array<bool, emergencyMessageCount>& on) = 0;
    virtual void updateRegularMessages(const std::string& startAddress,
                                       const std::array<bool, regularMessageCount>& on) = 0;
    virtual void updateCoil(const std::string& address, bool on) = 0;
    virtual void updateRegister(const std::string& address, const std::string& value) = 0;
};

} // namespace orvista
