#include "simulator/EndSignals.h"

#ifndef _WIN32
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>
#endif

namespace orvista {

#ifdef _WIN32

// Nobody signals a Windows program: its window is closed, or it is ended from outside without being asked.
EndSignals::EndSignals(QObject* parent) : QObject(parent) {}
EndSignals::~EndSignals() = default;

#else

namespace {

// A signal handler can reach nothing but such a variable.
volatile std::sig_atomic_t writeEnd = -1;

void tellPipe(int) {
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
}

} // namespace

EndSignals::EndSignals(QObject* parent) : QObject(parent) {
    if (::pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::runtime_error("no pipe for signals");
    writeEnd = pipe_[1];
    notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
        notifier_->setEnabled(false);
        emit terminationRequested();
    });
    std::signal(SIGTERM, tellPipe);
    std::signal(SIGINT, tellPipe);
}

EndSignals::~EndSignals() {
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    notifier_.reset();
    ::close(pipe_[0]);
    ::close(pipe_[1]);
}

#endif

} // namespace orvista
