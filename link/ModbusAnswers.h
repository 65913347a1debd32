#pragma once

#include "link/DisplayFailure.h"
#include "link/ModbusFrames.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

/// What a device answers to the requests of link/ModbusFrames.h.
namespace orvista {

/// How long to wait for a connection, and for each answer, until the device counts as silent.
inline constexpr std::chrono::milliseconds answerTimeout{3'000};

/// A device that does not answer what it was asked; `what()` says of which request and why:
/// "reading coils 300 to 319: exception 2, illegal data address".
class BadAnswer : public DisplayFailure {
public:
    BadAnswer(const Frame& request, const std::string& reason);
};

/// An exception, which leaves the connection as it is.
class ExceptionAnswer : public BadAnswer {
public:
    ExceptionAnswer(const Frame& request, unsigned code);
    /// False where the request may be carried out all the same: before the device failed at it, later, or by
    /// a device behind a gateway.
    bool isRefusal() const;

private:
    unsigned code_;
};

/// "reading coils 300 to 319", "writing coil 100"
std::string requestInWords(const Frame& request);

/// The coils or registers that a reading asked for, as bytes; nothing for a writing that was confirmed. No
/// value while bytes of the answer are missing.
/// \param request one of link/ModbusFrames.h
/// \param received all that has come since the request was sent; the result lies in it
/// \throws BadAnswer once it is clear that this is not the answer
std::optional<std::span<const std::uint8_t>> answerData(const Frame& request,
                                                        std::span<const std::uint8_t> received);

/// Why an answer is missing when the device has ended the connection or the time is over.
/// \param received the bytes that came nevertheless
BadAnswer answerCutOff(const Frame& request, std::size_t received);
BadAnswer answerTimedOut(const Frame& request, std::size_t received,
                         std::chrono::milliseconds timeout = answerTimeout);

/// A coil of a reading's data. \param index from 0, within what was asked for
bool coilOf(std::span<const std::uint8_t> data, std::size_t index);
std::uint16_t registerOf(std::span<const std::uint8_t> data, std::size_t index);

} // namespace orvista
