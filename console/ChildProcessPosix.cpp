#include "console/ChildProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <stdio_ext.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace orvista::console {

namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/// Requests to end are the parent's to notice; the child they just end, unless they are to be ignored.
void forgetHandlers() {
    for (const int request : {SIGTERM, SIGHUP}) {
        struct sigaction present {};
        if (sigaction(request, nullptr, &present) == 0 && present.sa_handler != SIG_IGN)
            std::signal(request, SIG_DFL);
    }
    std::signal(SIGINT, SIG_IGN);
}

/// False where it cannot have them. What the parent has read ahead, not written yet or holds open, stays the
/// parent's.
bool takeStreams(int input, int output) {
    __fpurge(stdin);
    __fpurge(stdout);
    std::clearerr(stdin);
    const bool taken = dup2(input, STDIN_FILENO) >= 0 && dup2(output, STDOUT_FILENO) >= 0;
    closefrom(STDERR_FILENO + 1);
    return taken;
}

/// After fork, in the child.
[[noreturn]] void becomeChild(const ChildProcess::Work& work, pid_t parent, int input, int output,
                              std::span<const ChildProcess::Setting> environment) {
    // The parent may have ended before the request was made.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(EXIT_FAILURE);
    forgetHandlers();
    int status = EXIT_FAILURE;
    if (takeStreams(input, output)) {
        for (const auto& [name, value] : environment)
            setenv(name.c_str(), value.c_str(), 1);
        status = work.run();
        std::fflush(stdout);
    }
    _exit(status); // nothing of the parent's is tidied up here
}

class PipeEnd {
public:
    explicit PipeEnd(int end = -1) : end_(end) {}
    PipeEnd(PipeEnd&& other) noexcept : end_(std::exchange(other.end_, -1)) {}
    PipeEnd& operator=(PipeEnd&& other) noexcept {
        std::swap(end_, other.end_);
        return *this;
    }
    ~PipeEnd() {
        if (end_ >= 0)
            close(end_);
    }

    int get() const { return end_; }

private:
    int end_;
};

struct Pipe {
    PipeEnd reading;
    PipeEnd writing;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        fail("pipe");
    return {PipeEnd(ends[0]), PipeEnd(ends[1])};
}

} // namespace

struct ChildProcess::System {
    pid_t process = -1;
    PipeEnd input;
    PipeEnd output;
};

void ChildProcess::workInBulk() {
    const sched_param none{};
    if (sched_getscheduler(0) == SCHED_OTHER) // what the user chose stays
        sched_setscheduler(0, SCHED_BATCH, &none);
}

ChildProcess::ChildProcess(const Work& work, std::span<const Setting> environment)
    : system_(std::make_unique<System>()) {
    Pipe input = makePipe();
    Pipe output = makePipe();
    const pid_t parent = getpid();
    system_->process = fork();
    if (system_->process == 0)
        becomeChild(work, parent, input.reading.get(), output.writing.get(), environment);
    if (system_->process < 0)
        fail("fork");
    system_->input = std::move(input.writing);
    system_->output = std::move(output.reading);
    fcntl(system_->output.get(), F_SETFL, O_NONBLOCK);
}

ChildProcess::~ChildProcess() {
    kill(system_->process, SIGKILL);
    while (waitpid(system_->process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool ChildProcess::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t size = ::write(system_->input.get(), bytes.data(), bytes.size());
        if (size < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    }
    return true;
}

bool ChildProcess::read(std::string& bytes) {
    std::array<char, 4096> piece{};
    for (;;) {
        const ssize_t size = ::read(system_->output.get(), piece.data(), piece.size());
        if (size < 0 && errno == EINTR)
            continue;
        if (size <= 0)
            return size < 0 && errno == EAGAIN;
        bytes.append(piece.data(), static_cast<std::size_t>(size));
        if (static_cast<std::size_t>(size) < piece.size())
            return true; // whether that was all, the next call sees
    }
}

void ChildProcess::waitForAny(std::span<const std::unique_ptr<ChildProcess>> children,
                              Interruption& interruption) {
    std::vector<pollfd> watched{{interruption.signals(), POLLIN, 0}, {interruption.input(), POLLIN, 0}};
    for (const auto& child : children)
        watched.push_back({child->system_->output.get(), POLLIN, 0});
    constexpr int shortWhile = 1000;
    poll(watched.data(), watched.size(), shortWhile);
    if (watched[1].revents != 0)
        interruption.takeInput();
}

} // namespace orvista::console
