#pragma once

namespace orvista {

/// What the Modbus side does wrong on request.
enum class ModbusFault {
    None,
    Refuse,      ///< the port is taken but does not listen
    CloseAtOnce, ///< every connection is accepted and closed
    Reset,       ///< every connection is accepted and reset
    NoAnswer,    ///< requests are read and never answered, nor performed
    Exception,   ///< requests are answered with an exception and not performed
    Garbage      ///< requests are answered with bytes that are no Modbus, and not performed
};

/// What the file service does at its nth file.
enum class TransferFault {
    Refuse, ///< the file is refused as if the disk were full
    HangUp, ///< both connections are dropped in the middle of the file
    Stall   ///< the file is never finished and nothing is said any more
};

/// Faults that a tester asked for; they can change while the device runs.
struct Faults {
    ModbusFault modbus = ModbusFault::None;
    unsigned exceptionCode = 4; ///< 1 to 11; 4 is "server device failure"
    int answerDelay = 0;        ///< milliseconds before a Modbus request is performed and answered
    int failingFile = 0;        ///< which file fails, counted from 1 over stored and fetched ones; 0 for none
    TransferFault transfer = TransferFault::Refuse;
};

} // namespace orvista
