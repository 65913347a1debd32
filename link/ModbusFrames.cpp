#include "link/ModbusFrames.h"

#include "model/Numbers.h"
#include "model/Text.h"

#include <bit>
#include <charconv>
#include <cmath>

namespace orvista {

namespace {

constexpr std::string_view hexadecimalPrefix = "&H";

std::uint8_t highByte(std::size_t word) {
    return static_cast<std::uint8_t>(word >> 8 & 0xFF);
}

std::uint8_t lowByte(std::size_t word) {
    return static_cast<std::uint8_t>(word & 0xFF);
}

void appendWord(Frame& frame, std::size_t word) {
    frame.push_back(highByte(word));
    frame.push_back(lowByte(word));
}

/// Header and body; the length field counts what follows it.
Frame request(FunctionCode function, std::uint16_t address, const Frame& body) {
    constexpr std::size_t unitFunctionAndAddress = 4;
    Frame frame = {0x01, 0x02, 0x00, 0x00};
    appendWord(frame, unitFunctionAndAddress + body.size());
    frame.push_back(0xFF);
    frame.push_back(static_cast<std::uint8_t>(function));
    appendWord(frame, address);
    frame.insert(frame.end(), body.begin(), body.end());
    return frame;
}

Frame readRequest(FunctionCode function, std::uint16_t address, std::uint16_t count) {
    Frame body;
    appendWord(body, count);
    return request(function, address, body);
}

Frame coilsRequest(std::uint16_t address, std::span<const bool> on) {
    const std::size_t byteCount = (on.size() + 7) / 8;
    Frame body;
    appendWord(body, on.size());
    body.push_back(lowByte(byteCount));
    for (std::size_t first = 0; first < on.size(); first += 8) {
        unsigned bits = 0;
        for (std::size_t bit = 0; bit < 8 && first + bit < on.size(); ++bit)
            bits |= static_cast<unsigned>(on[first + bit]) << bit;
        body.push_back(lowByte(bits));
    }
    return request(FunctionCode::WriteMultipleCoils, address, body);
}

bool isHexadecimalDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

double leadingHexadecimalNumber(std::string_view digits) {
    std::size_t count = 0;
    while (count < digits.size() && isHexadecimalDigit(digits[count]))
        ++count;
    double value = 0.0;
    // Only digits are handed on: from_chars would read a point and an exponent too.
    const auto parsed = std::from_chars(digits.data(), digits.data() + count, value, std::chars_format::hex);
    if (parsed.ec == std::errc::result_out_of_range)
        throw Overflow();
    return value;
}

double requestNumber(std::string_view text) {
    text = trimLeadingBlanks(text);
    if (startsWithIgnoringCase(text, hexadecimalPrefix))
        return leadingHexadecimalNumber(text.substr(hexadecimalPrefix.size()));
    return leadingNumber(text);
}

} // namespace

std::uint16_t requestAddress(std::string_view text) {
    return toWhole<std::uint16_t>(requestNumber(text));
}

float requestValue(std::string_view text) {
    return nearestSingle(requestNumber(text));
}

Frame emergencyMessagesRequest(std::uint16_t address, const std::array<bool, emergencyMessageCount>& on) {
    return coilsRequest(address, on);
}

Frame regularMessagesRequest(std::uint16_t address, const std::array<bool, regularMessageCount>& on) {
    return coilsRequest(address, on);
}

Frame coilRequest(std::uint16_t address, bool on) {
    return request(FunctionCode::WriteSingleCoil, address,
                   {static_cast<std::uint8_t>(on ? 0xFF : 0x00), 0x00});
}

Frame registerPairRequest(std::uint16_t address, float value) {
    static_assert(sizeof(float) == 4 && std::numeric_limits<float>::is_iec559);
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const std::array words{static_cast<std::uint16_t>(bits & 0xFFFF), static_cast<std::uint16_t>(bits >> 16)};
    return registersRequest(address, words);
}

Frame registersRequest(std::uint16_t address, std::span<const std::uint16_t> words) {
    Frame body;
    appendWord(body, words.size());
    body.push_back(lowByte(2 * words.size()));
    for (const std::uint16_t word : words)
        appendWord(body, word);
    return request(FunctionCode::WriteMultipleRegisters, address, body);
}

Frame readCoilsRequest(std::uint16_t address, std::uint16_t count) {
    return readRequest(FunctionCode::ReadCoils, address, count);
}

Frame readRegistersRequest(std::uint16_t address, std::uint16_t count) {
    return readRequest(FunctionCode::ReadHoldingRegisters, address, count);
}

} // namespace orvista
