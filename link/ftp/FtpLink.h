#pragma once

#include "model/Files.h"

#include <curl/curl.h>

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
        std::chrono::seconds patience; ///< for connecting, and for silence
    };
    /// Takes a piece of what arrives; false ends the transfer as failed.
    using Receiver = std::function<bool(std::string_view)>;

    /// Connects and logs in; isOpen tells whether that worked.
    explicit FtpLink(Server server);
    bool isOpen() const { return open_; }

    /// A command outside any transfer. A server that refuses it is no failure.
    bool command(std::string_view line);
    bool store(const std::string& remoteName, ByteSource& source);
    /// \param sizeLimit in bytes; a longer file is a failure
    bool fetch(const std::string& remoteName, std::int64_t sizeLimit, ByteSink& sink);
    /// The bare names of the folder the login landed in.
    bool list(const Receiver& receiver);

private:
    struct Library {
        Library() { curl_global_init(CURL_GLOBAL_DEFAULT); }
        ~Library() { curl_global_cleanup(); }
        Library(const Library&) = delete;
        Library& operator=(const Library&) = delete;
    };
    struct CleanHandle {
        void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    };
    struct CleanUrl {
        void operator()(CURLU* url) const { curl_url_cleanup(url); }
    };

    using Clock = std::chrono::steady_clock;

    static std::size_t noteAnswer(char* line, std::size_t size, std::size_t count, void* link);
    static int endAtSilence(void* link, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent);
    static int acceptConnection(void* link, char* remoteAddress, char* localAddress, int remotePort,
                                int localPort);

    void prepare(const std::string& remoteName);
    bool setUrl(const std::string& remoteName);
    bool perform();
    template <typename Value>
    void set(CURLoption option, Value value) {
        usable_ = usable_ && curl_easy_setopt(handle_.get(), option, value) == CURLE_OK;
    }

    Library library_;
    Server server_;
    int localPort_ = 0;
    Clock::time_point lastHeard_; ///< when the other end last said, took or gave anything
    curl_off_t moved_ = 0;        ///< bytes of the running transfer
    bool usable_ = true;
    bool open_ = false;
    std::unique_ptr<CURLU, CleanUrl> url_{curl_url()};
    std::unique_ptr<CURL, CleanHandle> handle_{curl_easy_init()}; ///< calls back even while it goes
};

} // namespace orvista
