#pragma once

#include "simulator/DeviceMemory.h"

#include <memory>
#include <string>
#include <string_view>

// The library's own name for its modbus_t.
struct _modbus; // NOLINT(bugprone-reserved-identifier)

namespace orvista {

/// Performs Modbus requests on the device's memory and composes the answers, by libmodbus. The library reads
/// and writes sockets; it is given a pair of its own for every request, whose far end holds the whole request
/// and is then shut, so that no client can make it wait.
class ModbusResponder {
public:
    /// \throws std::runtime_error when the library cannot be set up
    explicit ModbusResponder(DeviceMemory& memory);

    /// Performs the request and returns the answer; empty when there is none to give.
    /// \param frame one complete frame
    std::string perform(std::string_view frame);
    /// The answer that refuses the request with an exception code, 1 to 11. Nothing is performed.
    std::string refuse(std::string_view frame, unsigned exceptionCode);

private:
    struct FreeContext {
        void operator()(_modbus* context) const;
    };
    template <typename Reply>
    std::string exchange(std::string_view frame, Reply reply);

    DeviceMemory& memory_;
    std::unique_ptr<_modbus, FreeContext> context_;
};

} // namespace orvista
