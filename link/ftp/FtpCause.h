#pragma once

#include <curl/curl.h>

#include <chrono>
#include <string>
#include <string_view>

namespace orvista {

/// What is known of an operation of a link that failed.
struct FtpFailure {
    CURLcode code = CURLE_OK;
    bool isOpening = false;         ///< it was to connect and log in
    bool isReconnect = false;       ///< the connection was gone, and another one not wanted
    bool hasStrangeLine = false;    ///< something came that is no reply of a file service
    long systemError = 0;           ///< of connecting, the system's number
    std::string_view lastReply;     ///< of this operation, without its line end; empty where none came
    std::chrono::seconds timeout{}; ///< for an answer
};

/// Why it failed.
std::string ftpCause(const FtpFailure& failure);

/// "220 ready": three digits and a blank, or the end. False for lines before the last one of a long reply.
bool isFtpReply(std::string_view line);
/// A reply that refuses, 400 to 599.
bool isFtpRefusal(std::string_view reply);
/// A reply of a service that does not know the command.
bool isUnknownFtpCommand(std::string_view reply);

} // namespace orvista
