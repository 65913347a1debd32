#pragma once

#include <string>
#include <string_view>

/// Where a command's texts go. All of them are UTF-8.
namespace orvista::console {

/// The program's standard streams while it runs: bytes go out as they are, a console shows them as UTF-8, and
/// a reader that leaves early does not end the program.
class StandardStreams {
public:
    StandardStreams();
    ~StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;

private:
    [[maybe_unused]] unsigned formerCodePage_ = 0; ///< a console's, on Windows
};

/// Who reads what is printed. A program gets every byte; what people see, and whatever a terminal gets, has
/// "?" for control characters but tabs and line ends, and for what is not UTF-8: names and texts come from
/// others.
enum class Reader { Person, Program };

/// To standard output. A closed pipe is not an error; the remaining output is dropped.
/// \throws CommandFailure when it cannot be written
void print(std::string_view text, Reader reader = Reader::Person);
/// The same for one line without its end: a line end within it is a control character, too.
void printLine(std::string_view line);
/// Writes what print() has kept back.
/// \throws CommandFailure
void finishOutput();
/// Writes at once. False when the reader has left, also for no text: there is nobody to go on for.
/// \throws CommandFailure
bool printNow(std::string_view text, Reader reader = Reader::Person);

/// A line to standard error, "orvista: " in front; whatever the text holds, it is one line, as printLine()
/// has it.
void complain(std::string_view text);

/// Shows on standard error how far a command is, where that is a terminal. What it showed goes with it.
class Progress {
public:
    Progress();
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    void show(const std::string& text);
    void clear();

private:
    bool hasTerminal_;
    bool isShown_ = false;
};

/// Writes a file whole or not at all: what stood there before stays until the new one is complete.
/// \throws CommandFailure
void writeFile(const std::string& path, std::string_view bytes);

} // namespace orvista::console
