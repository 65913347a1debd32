#include "console/ChildProcess.h"
#include "model/SystemPath.h"

#include <array>
#include <system_error>
#include <utility>
#include <windows.h>

namespace orvista::console {

namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

struct CloseSystemHandle {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<HANDLE, CloseSystemHandle>;

/// What is in it ends with the last handle of it, which this program holds: however it ends.
HANDLE jobOfChildren() {
    static const Handle job = [] {
        Handle made(CreateJobObjectW(nullptr, nullptr));
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        if (!made || SetInformationJobObject(made.get(), JobObjectExtendedLimitInformation, &limits,
                                             sizeof limits) == 0)
            fail("job");
        return made;
    }();
    return job.get();
}

std::wstring ownPath() {
    constexpr DWORD longestPath = 32767;
    std::wstring path(longestPath, L'\0');
    const DWORD size = GetModuleFileNameW(nullptr, path.data(), longestPath);
    if (size == 0)
        fail("own path");
    path.resize(size);
    return path;
}

std::wstring wide(const std::string& utf8) {
    return systemPath(utf8).wstring();
}

} // namespace

struct ChildProcess::System {
    Handle process;
    Handle input;
    Handle output;
};

namespace {

struct Pipe {
    Handle reading;
    Handle writing;
};

/// Its ends are inherited, but for the one that stays here.
Pipe makePipe(Handle Pipe::*ownEnd) {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (CreatePipe(&reading, &writing, &inherited, 0) == 0)
        fail("pipe");
    Pipe pipe{Handle(reading), Handle(writing)};
    SetHandleInformation((pipe.*ownEnd).get(), HANDLE_FLAG_INHERIT, 0);
    return pipe;
}

} // namespace

void ChildProcess::workInBulk() {}

ChildProcess::ChildProcess(const Work& work, std::span<const Setting> environment)
    : system_(std::make_unique<System>()) {
    const std::wstring program = ownPath();
    std::wstring line = L"orvista " + wide(work.argument);
    // Into this program's own, which the child inherits; it makes no other use of them any more.
    for (const auto& [name, value] : environment)
        SetEnvironmentVariableW(wide(name).c_str(), wide(value).c_str());

    Pipe input = makePipe(&Pipe::writing);
    Pipe output = makePipe(&Pipe::reading);

    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input.reading.get();
    start.hStdOutput = output.writing.get();
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION made{};
    // Stopped until it is in the job; in a group of its own, which Ctrl+C does not reach.
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE,
                       CREATE_SUSPENDED | CREATE_NEW_PROCESS_GROUP, nullptr, nullptr, &start, &made) == 0)
        fail("process");
    system_->process.reset(made.hProcess);
    const Handle thread(made.hThread);
    if (AssignProcessToJobObject(jobOfChildren(), made.hProcess) == 0) {
        TerminateProcess(made.hProcess, EXIT_FAILURE);
        fail("job");
    }
    system_->input = std::move(input.writing);
    system_->output = std::move(output.reading);
    ResumeThread(made.hThread);
}

ChildProcess::~ChildProcess() {
    TerminateProcess(system_->process.get(), EXIT_FAILURE);
    WaitForSingleObject(system_->process.get(), INFINITE);
}

bool ChildProcess::write(std::string_view bytes) {
    DWORD size = 0;
    return WriteFile(system_->input.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &size, nullptr) !=
               0 &&
           size == bytes.size();
}

bool ChildProcess::read(std::string& bytes) {
    HANDLE output = system_->output.get();
    std::array<char, 4096> piece{};
    for (;;) {
        DWORD size = 0;
        if (PeekNamedPipe(output, nullptr, 0, nullptr, &size, nullptr) == 0)
            return false;
        if (size == 0)
            return true;
        if (ReadFile(output, piece.data(), piece.size(), &size, nullptr) == 0)
            return false;
        bytes.append(piece.data(), size);
    }
}

/// A pipe cannot be waited for here, so that the children are looked at now and then.
void ChildProcess::waitForAny(std::span<const std::unique_ptr<ChildProcess>>, Interruption& interruption) {
    constexpr DWORD shortWhile = 10;
    WaitForSingleObject(interruption.event(), shortWhile);
    interruption.takeInput();
}

} // namespace orvista::console
