#pragma once

#include "link/ftp/CurlLibrary.h"
#include "link/ftp/DataEnd.h"
#include "link/ftp/TransferWatch.h"
#include "model/Bytes.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace orvista {

/// One logged-in control connection, over which files and lists go one after another. Every call blocks and
/// returns false for any failure. Remote names are bytes, sent exactly as given.
class FtpLink {
public:
    struct Server {
        std::string host; ///< as typed, UTF-8
        std::uint16_t port;
        std::string user;
        std::string password;
        std::chrono::seconds timeout; ///< for connecting, and for silence
    };
    /// Takes a piece of what arrives; false ends the transfer as failed.
    using Receiver = std::function<bool(std::string_view)>;
    /// Asked again and again; true ends what the link does as failed.
    using EndCondition = std::function<bool()>;

    /// Connects and logs in; isOpen tells whether that worked.
    FtpLink(std::unique_ptr<const CurlLibrary> library, Server server, TransferWatch::Clock clock,
            EndCondition isToEnd = {});
    ~FtpLink();
    FtpLink(const FtpLink&) = delete;
    FtpLink& operator=(const FtpLink&) = delete;

    bool isOpen() const { return open_; }
    /// Why the last call failed; empty where it did not.
    const std::string& cause() const { return cause_; }
    /// What the device answered last to the last call, without the line end; empty where nothing came.
    const std::string& lastReply() const { return lastReply_; }

    /// A command outside any transfer. A server may refuse it; that does not count as a failure.
    bool command(std::string_view line);
    bool store(const std::string& remoteName, ByteSource& source);
    /// \param sizeLimit in bytes; a longer file is a failure, and so is one that is not as long as the device
    ///                  said
    bool fetch(const std::string& remoteName, std::int64_t sizeLimit, ByteSink& sink);
    /// The bare names of the folder the login landed in.
    bool list(const Receiver& receiver);

private:
    static std::size_t noteAnswer(char* line, std::size_t size, std::size_t count, void* link);
    static int noteDataConnection(void* link, curl_socket_t socket, curlsocktype purpose);
    static int closeConnection(void* link, curl_socket_t socket);
    static int acceptConnection(void* link, char* remoteAddress, char* localAddress, int remotePort,
                                int localPort);

    void prepare(const std::string& remoteName);
    bool setServer();
    bool perform();
    bool runToItsEnd();
    bool takeInto(ByteSink& sink, std::string_view bytes);
    bool refuse(std::string_view cause);
    bool waitForMore();
    bool seesEndOfData();
    bool hasMoreThanToldOf();
    bool isGivenUp();
    std::string causeOfFailure();
    std::int64_t movedBytes() const;
    template <typename Value>
    void set(CURLoption option, Value value) {
        usable_ = usable_ && curl_->easySetOption(handle_.get(), option, value) == CURLE_OK;
    }

    std::unique_ptr<const CurlLibrary> curl_;
    Server server_;
    TransferWatch::Clock clock_;
    EndCondition isToEnd_;
    TransferWatch watch_;
    DataEnd dataEnd_;
    CURLcode code_ = CURLE_OK; ///< of the last call
    std::string givenUpCause_; ///< of the last call, where it was ended here
    std::string lastReply_;
    std::string cause_;
    bool hasStrangeLine_ = false;
    bool isReconnect_ = false;
    int localPort_ = 0;
    bool usable_ = true;
    bool idle_ = false; ///< the library waited for nothing when it was last called
    bool open_ = false;
    std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url_;
    /// Holds the connection.
    std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> multi_;
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle_;
};

} // namespace orvista
