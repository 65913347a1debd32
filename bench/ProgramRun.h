#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <vector>

/// Programs that a benchmark runs to their end.
namespace orvista::bench {

/// What it prints is thrown away. \throws std::runtime_error
inline pid_t startProgram(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (std::string& word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error = posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error(command[0] + " does not start");
    return process;
}

/// \returns what it took, with the processes that it waited for
/// \throws std::runtime_error unless it ends well
inline rusage finishProgram(pid_t process) {
    int status = 0;
    rusage usage{};
    if (wait4(process, &status, 0, &usage) != process || status != 0)
        throw std::runtime_error("the program failed");
    return usage;
}

} // namespace orvista::bench
