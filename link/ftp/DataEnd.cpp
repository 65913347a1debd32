#include "link/ftp/DataEnd.h"

#include "link/SystemSocket.h"

namespace orvista {

void DataEnd::noteOpened(curl_socket_t socket) {
    clear();
    socket_ = socket;
}

void DataEnd::close(curl_socket_t socket) {
    if (socket != socket_)
        return systemsocket::closeHandle(socket);
    isKept_ = true;
    // At once: a device that has more waits for it to be taken, and libcurl for the device.
    hasMore();
}

bool DataEnd::hasMore() {
    if (!isKept_)
        return hasMore_;
    char byte = 0;
    const auto size = ::recv(socket_, &byte, 1, MSG_PEEK);
    if (size < 0 && systemsocket::lastError() == systemsocket::wouldBlock)
        return false;
    hasMore_ = size > 0; // after a reset nothing comes any more either
    closeKept();
    return hasMore_;
}

void DataEnd::wait(int milliseconds) const {
    if (isKept_)
        systemsocket::wait(socket_, systemsocket::Wanted::Reading, milliseconds);
}

void DataEnd::clear() {
    if (isKept_)
        closeKept();
    socket_ = CURL_SOCKET_BAD;
    hasMore_ = false;
}

void DataEnd::closeKept() {
    systemsocket::closeHandle(socket_);
    socket_ = CURL_SOCKET_BAD;
    isKept_ = false;
}

} // namespace orvista
