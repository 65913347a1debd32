#pragma once

#include "link/DisplayAddress.h"
#include "link/ftp/FtpTransferControl.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvista::bench {

/// A connected socket, closed with the object.
class PlainSocket {
public:
    /// \param display with an IPv4 address
    explicit PlainSocket(const DisplayAddress& display)
        : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(display.port);
        inet_pton(AF_INET, display.host.c_str(), &address.sin_addr);
        const int atOnce = 1;
        setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &atOnce, sizeof atOnce);
        if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            throw std::runtime_error("no connection");
    }
    ~PlainSocket() { ::close(socket_); }
    PlainSocket(const PlainSocket&) = delete;
    PlainSocket& operator=(const PlainSocket&) = delete;

    void sendAll(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent <= 0)
                throw std::runtime_error("not sent");
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
    }
    std::string receiveAll() const {
        std::string bytes;
        std::array<char, 4096> piece{};
        ssize_t size = 0;
        while ((size = ::recv(socket_, piece.data(), piece.size(), 0)) > 0)
            bytes.append(piece.data(), static_cast<std::size_t>(size));
        return bytes;
    }
    std::string receive() const {
        std::array<char, 4096> bytes{};
        const ssize_t size = ::recv(socket_, bytes.data(), bytes.size(), 0);
        if (size <= 0)
            throw std::runtime_error("nothing came");
        return {bytes.data(), static_cast<std::size_t>(size)};
    }

private:
    int socket_;
};

/// The editor's dialogue with the device over plain blocking sockets: the least that a transfer can take.
class PlainFtp {
public:
    explicit PlainFtp(const DisplayAddress& display) : host_(display.host), control_(display) {
        reply();
        say("USER " + std::string(ftpUser));
        say("PASS " + std::string(ftpPassword));
        say("PWD");
    }
    void begin() { say(std::string(uploadBeginsCommand)); }
    void store(const std::string& name, std::string_view bytes) {
        {
            const PlainSocket data(passive());
            take('I');
            say("STOR " + name);
            data.sendAll(bytes);
        }
        if (!reply().starts_with("226"))
            throw std::runtime_error("not stored");
    }
    /// The names of the folder, or with a name that file.
    std::string fetch(const std::string& name = {}) {
        const PlainSocket data(passive());
        take(name.empty() ? 'A' : 'I');
        if (!name.empty())
            say("SIZE " + name);
        say(name.empty() ? "NLST" : "RETR " + name);
        std::string bytes = data.receiveAll();
        if (!reply().starts_with("226"))
            throw std::runtime_error("not fetched");
        return bytes;
    }
    void finish() { say(std::string(uploadEndsCommand)); }
    void quit() { say("QUIT"); }

private:
    DisplayAddress passive() {
        const std::string opened = say("EPSV");
        return {host_, static_cast<std::uint16_t>(std::stoi(opened.substr(opened.find("|||") + 3)))};
    }
    void take(char type) {
        if (type_ != type)
            say(std::string("TYPE ") + type);
        type_ = type;
    }
    std::string say(const std::string& line) {
        control_.sendAll(line + "\r\n");
        return reply();
    }
    /// The last line of the next reply.
    std::string reply() {
        for (;;) {
            for (auto end = received_.find("\r\n"); end != std::string::npos; end = received_.find("\r\n")) {
                std::string line = received_.substr(0, end);
                received_.erase(0, end + 2);
                if (line.size() > 3 && line[3] == ' ')
                    return line;
            }
            received_ += control_.receive();
        }
    }

    std::string host_;
    PlainSocket control_;
    std::string received_;
    char type_ = 0;
};

} // namespace orvista::bench
