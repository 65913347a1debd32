#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvista::testing {

/// A program whose standard input and output are pipes. It is expected to end with its input; should it not,
/// it is killed, so that it never outlives the object, nor the test, whose death closes the pipes too.
class ChildProcess {
public:
    explicit ChildProcess(std::vector<std::string> command) {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        if (pipe2(input.data(), O_CLOEXEC) != 0 || pipe2(output.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
        std::vector<char*> arguments;
        for (std::string& argument : command)
            arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        const int error = posix_spawn(&process_, arguments[0], &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        close(input[0]);
        close(output[1]);
        input_ = input[1];
        output_ = output[0];
        if (error != 0) {
            closePipes();
            throw std::runtime_error("cannot run " + command[0]);
        }
    }

    ~ChildProcess() {
        closePipes();
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (waitpid(process_, nullptr, WNOHANG) == 0) {
            if (std::chrono::steady_clock::now() > deadline) {
                kill(process_, SIGKILL);
                waitpid(process_, nullptr, 0);
                return;
            }
            poll(nullptr, 0, 1);
        }
    }

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t id() const { return process_; }

    /// Sends a line, and returns the one that answers it.
    std::string ask(const std::string& line) {
        const std::string bytes = line + '\n';
        if (write(input_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
            throw std::runtime_error("the child process does not listen");
        return readLine();
    }

    /// The next line of the program's output, without its end.
    std::string readLine() {
        constexpr int deadline = 30'000;
        std::string line;
        for (char c = 0;;) {
            pollfd ready{output_, POLLIN, 0};
            if (poll(&ready, 1, deadline) != 1 || read(output_, &c, 1) != 1)
                throw std::runtime_error("the child process said nothing");
            if (c == '\n')
                return line;
            line.push_back(c);
        }
    }

private:
    void closePipes() {
        close(input_);
        close(output_);
    }

    pid_t process_ = 0;
    int input_ = -1;
    int output_ = -1;
};

} // namespace orvista::testing
