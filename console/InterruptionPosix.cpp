#include "console/Interruption.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace orvista::console {

namespace {

constexpr std::array requests{SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t hasCome = 0;
std::array<int, 2> ends{-1, -1};

void note(int) {
    const int error = errno;
    hasCome = 1;
    const char byte = 0;
    static_cast<void>(write(ends[1], &byte, 1)); // a pipe that is full says the same
    errno = error;
}

} // namespace

Interruption::Interruption(WatchInput input) : watchesInput_(input == WatchInput::Yes) {
    hasCome = 0;
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    for (const int request : requests) {
        struct sigaction before {};
        // What was to be ignored, as under nohup, still is.
        if (sigaction(request, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
            struct sigaction action {};
            action.sa_handler = note;
            sigaction(request, &action, nullptr);
        }
    }
}

Interruption::~Interruption() {
    for (const int request : requests) {
        struct sigaction present {};
        if (sigaction(request, nullptr, &present) == 0 && present.sa_handler == note)
            std::signal(request, SIG_DFL);
    }
    close(ends[0]);
    close(ends[1]);
}

bool Interruption::came() const {
    return hasCome != 0;
}

int Interruption::signals() const {
    return ends[0];
}

int Interruption::input() const {
    return watchesInput_ ? STDIN_FILENO : -1;
}

void Interruption::takeInput() {
    if (!watchesInput_)
        return;
    std::array<char, 256> bytes{};
    const ssize_t size = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (size == 0 || (size < 0 && errno != EINTR && errno != EAGAIN))
        hasCome = 1;
}

} // namespace orvista::console
