#include "simulator/ModbusRequests.h"
#include "simulator/ModbusResponder.h"
#include "tests/fuzz/ReaderRun.h"

// The input is what one connection sends: it is cut into frames as the device does, and each is taken apart
// and performed on a memory that all inputs share.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    using testing::require;
    static DeviceMemory memory;
    const std::string_view received = testing::inputBytes(data, size);
    std::string_view rest = received;
    for (;;) {
        const FrameStart first = firstModbusFrame(rest);
        if (first.state != FrameState::Complete)
            break;
        require(first.size > modbusHeaderSize && first.size <= longestModbusFrame &&
                first.size <= rest.size());
        const std::string_view frame = rest.substr(0, first.size);
        if (const std::optional<ModbusRequest> request = parseModbusRequest(frame)) {
            require(knowsModbusFunction(frame));
            require(request->data.size() < frame.size());
            require(request->quantity > 0);
        }
        const std::string answer = performModbusRequest(frame, memory);
        require(answer.size() > modbusHeaderSize && answer.size() <= longestModbusFrame);
        require(firstModbusFrame(answer) == FrameStart{FrameState::Complete, answer.size()});
        require(!describeModbusRequest(frame).empty());
        require(hexBytes(frame).size() == 3 * frame.size() - 1);
        rest.remove_prefix(first.size);
    }
    // Noise is described, too: answers and logs hold whatever came.
    require(!describeModbusRequest(received).empty());
    require(!writesModbusMemory(received) || parseModbusRequest(received).has_value());
    require(!modbusException(received) || received.size() == modbusHeaderSize + 2);
    return 0;
}
