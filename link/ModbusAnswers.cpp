#include "link/ModbusAnswers.h"

#include "model/Numbers.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orvista {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint8_t exceptionBit = 0x80;
/// The longest that the protocol allows, in what the length counts.
constexpr std::size_t longestLength = 254;
constexpr std::size_t shortestLength = 2; ///< unit and function

std::size_t wordAt(Bytes bytes, std::size_t index) {
    return std::size_t{bytes[index]} << 8 | bytes[index + 1];
}

FunctionCode functionOf(const Frame& request) {
    return static_cast<FunctionCode>(request[frameHeaderSize]);
}

bool isReading(const Frame& request) {
    return functionOf(request) == FunctionCode::ReadCoils ||
           functionOf(request) == FunctionCode::ReadHoldingRegisters;
}

/// Address and count follow the function code; a single coil has its value there instead of a count.
std::size_t requestedAddress(const Frame& request) {
    return wordAt(request, frameHeaderSize + 1);
}

std::size_t countOf(const Frame& request) {
    return functionOf(request) == FunctionCode::WriteSingleCoil ? 1 : wordAt(request, frameHeaderSize + 3);
}

std::string exceptionInWords(unsigned code) {
    static constexpr std::array<std::string_view, 12> meanings{"",
                                                               "illegal function",
                                                               "illegal data address",
                                                               "illegal data value",
                                                               "server device failure",
                                                               "acknowledge",
                                                               "server device busy",
                                                               "",
                                                               "memory parity error",
                                                               "",
                                                               "gateway path unavailable",
                                                               "gateway target device failed to respond"};
    std::string text = "exception " + decimalText(code);
    if (code < meanings.size() && !meanings[code].empty())
        text.append(", ").append(meanings[code]);
    return text;
}

void expectHeader(const Frame& request, Bytes received) {
    const std::size_t length = wordAt(received, 4);
    if (wordAt(received, 2) != 0 || length < shortestLength || length > longestLength)
        throw BadAnswer(request, "the display's answer is not Modbus");
    if (!std::equal(request.begin(), request.begin() + 2, received.begin()))
        throw BadAnswer(request, "the display answers another request");
}

/// \param answer a whole frame
void expectAnswerTo(const Frame& request, Bytes answer) {
    constexpr std::size_t unit = frameHeaderSize - 1;
    if (answer[unit] != request[unit])
        throw BadAnswer(request, "unit " + decimalText(answer[unit]) + " answers instead of unit " +
                                     decimalText(request[unit]));
    const std::uint8_t function = answer[frameHeaderSize];
    if (function == (request[frameHeaderSize] | exceptionBit) && answer.size() == frameHeaderSize + 2)
        throw ExceptionAnswer(request, answer[frameHeaderSize + 1]);
    if (function != request[frameHeaderSize])
        throw BadAnswer(request, "the display answers with function " + decimalText(function));
}

Bytes dataRead(const Frame& request, Bytes answer) {
    constexpr std::size_t beforeData = frameHeaderSize + 2; // function and byte count
    const std::size_t wanted =
        functionOf(request) == FunctionCode::ReadCoils ? (countOf(request) + 7) / 8 : 2 * countOf(request);
    if (answer.size() != beforeData + wanted || answer[beforeData - 1] != wanted)
        throw BadAnswer(request, "the answer does not hold the " + decimalText(wanted) + " bytes asked for");
    return answer.subspan(beforeData);
}

void expectConfirmation(const Frame& request, Bytes answer) {
    constexpr std::size_t size = frameHeaderSize + 5; // function, address, and value or count
    if (answer.size() != size ||
        !std::equal(answer.begin() + frameHeaderSize, answer.end(), request.begin() + frameHeaderSize))
        throw BadAnswer(request, "the display confirms something else");
}

} // namespace

BadAnswer::BadAnswer(const Frame& request, const std::string& reason)
    : DisplayFailure(requestInWords(request) + ": " + reason) {}

ExceptionAnswer::ExceptionAnswer(const Frame& request, unsigned code)
    : BadAnswer(request, exceptionInWords(code)), code_(code) {}

bool ExceptionAnswer::isRefusal() const {
    constexpr unsigned failedWhileAtIt = 4;
    constexpr unsigned acknowledge = 5;
    constexpr unsigned behindGateway = 11;
    return code_ != failedWhileAtIt && code_ != acknowledge && code_ != behindGateway;
}

std::string requestInWords(const Frame& request) {
    const bool isAboutRegisters = functionOf(request) == FunctionCode::ReadHoldingRegisters ||
                                  functionOf(request) == FunctionCode::WriteMultipleRegisters;
    const std::size_t first = requestedAddress(request);
    const std::size_t count = countOf(request);
    std::string text = isReading(request) ? "reading " : "writing ";
    text += isAboutRegisters ? "register" : "coil";
    if (count == 1)
        return text + " " + decimalText(first);
    return text + "s " + decimalText(first) + " to " + decimalText(first + count - 1);
}

std::optional<Bytes> answerData(const Frame& request, Bytes received) {
    if (received.size() <= frameHeaderSize)
        return std::nullopt;
    expectHeader(request, received);
    const std::size_t size = uncountedHeaderSize + wordAt(received, 4);
    if (received.size() < size)
        return std::nullopt;
    expectAnswerTo(request, received.first(size));
    if (received.size() > size)
        throw BadAnswer(request, "the answer is longer than its header says");
    if (isReading(request))
        return dataRead(request, received);
    expectConfirmation(request, received);
    return Bytes();
}

BadAnswer answerCutOff(const Frame& request, std::size_t received) {
    if (received == 0)
        return {request, "the display ended the connection without an answer"};
    return {request,
            "the display ended the connection after " + countedText(received, "byte") + " of its answer"};
}

BadAnswer answerTimedOut(const Frame& request, std::size_t received, std::chrono::milliseconds timeout) {
    if (received == 0)
        return {request, "no answer within " + secondsText(timeout)};
    return {request,
            "only " + countedText(received, "byte") + " of an answer within " + secondsText(timeout)};
}

bool coilOf(Bytes data, std::size_t index) {
    return (data[index / 8] >> (index % 8) & 1U) != 0;
}

std::uint16_t registerOf(Bytes data, std::size_t index) {
    return static_cast<std::uint16_t>(wordAt(data, 2 * index));
}

} // namespace orvista
