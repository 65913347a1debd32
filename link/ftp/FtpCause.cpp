#include "link/ftp/FtpCause.h"

#include "link/TransferCause.h"

#include <algorithm>
#include <array>

namespace orvista {

namespace {

std::string openingCause(const FtpFailure& failure) {
    if (failure.code == CURLE_COULDNT_RESOLVE_HOST)
        return std::string(causeUnknownHost);
    if (failure.code == CURLE_COULDNT_CONNECT)
        return connectionCause(static_cast<int>(failure.systemError));
    if (failure.hasStrangeLine)
        return std::string(causeNoFileService);
    // Before silence: libcurl takes 421 for the end of a time.
    if (isFtpRefusal(failure.lastReply))
        return (failure.code == CURLE_LOGIN_DENIED ? "login refused: " : "refused: ") +
               replyCause(failure.lastReply);
    return failure.code == CURLE_OPERATION_TIMEDOUT ? silenceCause(failure.timeout)
                                                    : std::string(causeHungUp);
}

} // namespace

std::string ftpCause(const FtpFailure& failure) {
    if (failure.isOpening)
        return openingCause(failure);
    if (failure.isReconnect)
        return std::string(causeHungUp);
    if (isFtpRefusal(failure.lastReply))
        return replyCause(failure.lastReply);
    switch (failure.code) {
    case CURLE_OPERATION_TIMEDOUT:
        return silenceCause(failure.timeout);
    case CURLE_COULDNT_CONNECT: // of the data, unless the link itself was gone
        return failure.lastReply.empty() ? std::string(causeHungUp)
                                         : connectionCause(static_cast<int>(failure.systemError));
    case CURLE_PARTIAL_FILE:
        return "it ended too early";
    case CURLE_FILESIZE_EXCEEDED:
    case CURLE_WRITE_ERROR:
        return std::string(causeTooLong);
    case CURLE_ABORTED_BY_CALLBACK:
    case CURLE_READ_ERROR:
        return "it cannot be read here";
    default:
        return std::string(causeHungUp);
    }
}

bool isFtpReply(std::string_view line) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return line.size() >= 3 && std::all_of(line.begin(), line.begin() + 3, isDigit) &&
           (line.size() == 3 || line[3] == ' ');
}

bool isFtpRefusal(std::string_view reply) {
    return reply.starts_with('4') || reply.starts_with('5');
}

bool isUnknownFtpCommand(std::string_view reply) {
    constexpr std::array<std::string_view, 4> replies{"500", "501", "502", "504"};
    return std::ranges::find(replies, reply.substr(0, 3)) != replies.end();
}

} // namespace orvista
