#include "console/Output.h"

#include "console/CommandFailure.h"
#include "model/FileReplacing.h"
#include "model/Lines.h"
#include "model/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#endif

namespace orvista::console {

namespace {

/// What the system says of a pipe whose reader is gone. Windows has no name of its own for it.
bool hasReaderLeft(int error) {
#ifdef _WIN32
    return error == EPIPE || error == EINVAL;
#else
    return error == EPIPE;
#endif
}

bool isTerminal(std::FILE* stream) {
#ifdef _WIN32
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

#ifdef _WIN32
/// Only writing tells.
bool isReaderGone() {
    return false;
}
#else
bool isReaderGone() {
    pollfd output{STDOUT_FILENO, 0, 0};
    return poll(&output, 1, 0) > 0 && (output.revents & (POLLERR | POLLHUP)) != 0;
}

/// What is opened next would get the number of a standard stream that is closed, and our texts with it. In
/// the wrong direction, so that using the stream still fails.
void holdClosedStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0)
            static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
    }
}
#endif

bool isControl(std::string_view character) {
    const auto first = static_cast<unsigned char>(character.front());
    if (character.size() == 1)
        return first < 0x20 || first == 0x7F;
    // The second set, U+0080 to U+009F; some terminals obey it, too.
    return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

/// \param mayStay whether a control character (with what follows it) is harmless
template <typename MayStay>
std::string withoutControls(std::string_view text, MayStay mayStay) {
    std::string clean;
    clean.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = utf8CharacterLength(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        const bool isClean = length > 0 && (!isControl(character) || mayStay(text));
        clean.append(isClean ? character : "?");
        text.remove_prefix(character.size());
    }
    return clean;
}

std::string cleanText(std::string_view text) {
    return withoutControls(text, [](std::string_view rest) {
        return rest.front() == '\n' || rest.front() == '\t' || rest.starts_with(lineEnd);
    });
}

std::string cleanLine(std::string_view line) {
    return withoutControls(line, [](std::string_view rest) { return rest.front() == '\t'; });
}

std::string forReader(std::string_view text, Reader reader) {
    static const bool hasTerminal = isTerminal(stdout);
    return reader == Reader::Person || hasTerminal ? cleanText(text) : std::string(text);
}

void failUnlessReaderLeft() {
    const int error = errno;
    std::clearerr(stdout);
    if (!hasReaderLeft(error))
        throw CommandFailure(ExitStatus::Found, "standard output: " + std::generic_category().message(error));
}

} // namespace

StandardStreams::StandardStreams() {
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
    formerCodePage_ = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
#else
    holdClosedStreams();
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN); // a file that may not grow is a failure like a full disk
#endif
}

StandardStreams::~StandardStreams() {
#ifdef _WIN32
    if (formerCodePage_ != 0)
        SetConsoleOutputCP(formerCodePage_);
#endif
}

void print(std::string_view text, Reader reader) {
    const std::string shown = forReader(text, reader);
    if (!shown.empty() && std::fwrite(shown.data(), 1, shown.size(), stdout) < shown.size())
        failUnlessReaderLeft();
}

void printLine(std::string_view line) {
    print(cleanLine(line) + "\n");
}

void finishOutput() {
    if (std::fflush(stdout) != 0)
        failUnlessReaderLeft();
}

bool printNow(std::string_view text, Reader reader) {
    if (text.empty())
        return !isReaderGone();
    const std::string shown = forReader(text, reader);
    // What does not fit into the buffer may fail before the rest of it is written.
    const bool isTaken = std::fwrite(shown.data(), 1, shown.size(), stdout) == shown.size();
    if (isTaken && std::fflush(stdout) == 0)
        return true;
    failUnlessReaderLeft();
    return false;
}

void complain(std::string_view text) {
    std::fprintf(stderr, "orvista: %s\n", cleanLine(text).c_str());
}

Progress::Progress() : hasTerminal_(isTerminal(stderr)) {}

void Progress::show(const std::string& text) {
    if (!hasTerminal_)
        return;
    clear();
    std::fputs(cleanLine(text).c_str(), stderr);
    std::fflush(stderr);
    isShown_ = true;
}

void Progress::clear() {
    // Back to the start of the line, and the rest of the line away.
    if (isShown_)
        std::fputs("\r\x1B[K", stderr);
    isShown_ = false;
}

void writeFile(const std::string& path, std::string_view bytes) {
    try {
        replaceFile(path, bytes);
    } catch (const std::system_error& failure) {
        throw CommandFailure(ExitStatus::Found, path + ": " + failure.code().message());
    }
}

} // namespace orvista::console
