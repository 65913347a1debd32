#pragma once

#include <curl/curl.h>

namespace orvista {

/// The end of a file that is being fetched. libcurl reads no further than the size that the device told
/// beforehand and takes that for the whole file; only the connection that brings the file knows better. So it
/// is kept here once libcurl is done with it, until it has shown that nothing more comes.
class DataEnd {
public:
    DataEnd() = default;
    ~DataEnd() { clear(); }
    DataEnd(const DataEnd&) = delete;
    DataEnd& operator=(const DataEnd&) = delete;

    /// Libcurl opens the connection that is to bring the file.
    void noteOpened(curl_socket_t socket);
    /// Closes a connection for libcurl, or keeps it.
    void close(curl_socket_t socket);
    /// The connection is kept and has shown neither its end nor more bytes.
    bool isAwaited() const { return isKept_; }
    /// Looks without waiting. True when bytes came that libcurl did not take.
    bool hasMore();
    /// Waits for something to look at, at most so long.
    void wait(int milliseconds) const;
    /// No file is being fetched any more.
    void clear();

private:
    void closeKept();

    curl_socket_t socket_ = CURL_SOCKET_BAD; ///< of the connection that brings the file
    bool isKept_ = false;
    bool hasMore_ = false;
};

} // namespace orvista
