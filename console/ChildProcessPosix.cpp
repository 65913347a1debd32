#include "console/ChildProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace orvista::console {

namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

std::string ownPath() {
    std::string path(4096, '\0');
    const ssize_t size = readlink("/proc/self/exe", path.data(), path.size());
    if (size < 0)
        fail("/proc/self/exe");
    path.resize(static_cast<std::size_t>(size));
    return path;
}

/// Between fork and exec, in the child.
[[noreturn]] void becomeChild(const char* program, char* const* arguments, pid_t parent, int input,
                              int output, std::span<const ChildProcess::Setting> environment) {
    // The parent may have ended before the request was made.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(EXIT_FAILURE);
    if (dup2(input, STDIN_FILENO) < 0 || dup2(output, STDOUT_FILENO) < 0)
        _exit(EXIT_FAILURE);
    std::signal(SIGINT, SIG_IGN);
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    execv(program, arguments);
    _exit(EXIT_FAILURE);
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

ChildProcess::ChildProcess(const std::vector<std::string>& arguments, std::span<const Setting> environment)
    : system_(std::make_unique<System>()) {
    const std::string program = ownPath();
    std::vector<std::string> words{"orvista"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    Pipe input = makePipe();
    Pipe output = makePipe();
    const pid_t parent = getpid();
    system_->process = fork();
    if (system_->process == 0)
        becomeChild(program.c_str(), pointers.data(), parent, input.reading.get(), output.writing.get(),
                    environment);
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
        if (size > 0)
            bytes.append(piece.data(), static_cast<std::size_t>(size));
        else if (size == 0 || errno != EINTR)
            return size != 0 && errno == EAGAIN;
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
