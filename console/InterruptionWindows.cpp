#include "console/Interruption.h"

#include <atomic>
#include <system_error>
#include <windows.h>

namespace orvista::console {

namespace {

std::atomic<HANDLE> request = nullptr; // the system calls the handler in a thread of its own

BOOL WINAPI note(DWORD) {
    SetEvent(request);
    return TRUE;
}

} // namespace

Interruption::Interruption(WatchInput input) : watchesInput_(input == WatchInput::Yes) {
    request = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (request == nullptr)
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "event");
    SetConsoleCtrlHandler(note, TRUE);
}

Interruption::~Interruption() {
    SetConsoleCtrlHandler(note, FALSE);
    CloseHandle(request);
}

bool Interruption::came() const {
    return WaitForSingleObject(request, 0) == WAIT_OBJECT_0;
}

void* Interruption::event() const {
    return request;
}

void Interruption::takeInput() {
    DWORD size = 0;
    if (!watchesInput_)
        return;
    HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    char byte = 0;
    // A pipe whose writer is gone cannot be looked into any more.
    if (PeekNamedPipe(input, nullptr, 0, nullptr, &size, nullptr) == 0)
        SetEvent(request);
    else if (size > 0)
        ReadFile(input, &byte, 1, &size, nullptr);
}

} // namespace orvista::console
