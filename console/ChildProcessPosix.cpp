#include "console/ChildProcess.h"

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
[[noreturn]] void becomeChild(const char* program, char* const* arguments, pid_t parent, int output,
                              std::span<const ChildProcess::Setting> environment) {
    // The parent may have ended before the request was made.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(EXIT_FAILURE);
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (nothing < 0 || dup2(nothing, STDIN_FILENO) < 0 || dup2(output, STDOUT_FILENO) < 0)
        _exit(EXIT_FAILURE);
    std::signal(SIGINT, SIG_IGN);
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    execv(program, arguments);
    _exit(EXIT_FAILURE);
}

} // namespace

struct ChildProcess::System {
    pid_t process = -1;
    int output = -1;
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

    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        fail("pipe");
    const pid_t parent = getpid();
    system_->process = fork();
    if (system_->process == 0)
        becomeChild(program.c_str(), pointers.data(), parent, ends[1], environment);
    const int error = errno;
    close(ends[1]);
    system_->output = ends[0];
    if (system_->process < 0) {
        close(system_->output);
        throw std::system_error(error, std::generic_category(), "fork");
    }
    fcntl(system_->output, F_SETFL, O_NONBLOCK);
}

ChildProcess::~ChildProcess() {
    kill(system_->process, SIGKILL);
    close(system_->output);
    while (waitpid(system_->process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool ChildProcess::read(std::string& bytes) {
    std::array<char, 4096> piece{};
    for (;;) {
        const ssize_t size = ::read(system_->output, piece.data(), piece.size());
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
        watched.push_back({child->system_->output, POLLIN, 0});
    constexpr int shortWhile = 1000;
    poll(watched.data(), watched.size(), shortWhile);
    if (watched[1].revents != 0)
        interruption.takeInput();
}

} // namespace orvista::console
