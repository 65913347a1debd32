#include "console/Program.h"

#include "console/Commands.h"
#include "console/Output.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>

namespace orvista::console {

namespace {

/// The names down to the command that was to run: "orvista messages export".
std::string commandName(const CLI::App& program) {
    std::string name = program.get_name();
    for (const CLI::App* command = &program; !command->get_subcommands().empty();) {
        command = command->get_subcommands().front();
        name += " " + command->get_name();
    }
    return name;
}

/// "--columns needs N" for the parser's "--columns: 1 required N missing".
std::string needText(std::string text) {
    constexpr std::string_view middle = ": 1 required ";
    constexpr std::string_view end = " missing";
    const std::size_t place = text.find(middle);
    if (place == std::string::npos || !text.ends_with(end))
        return text;
    text.resize(text.size() - end.size());
    return text.replace(place, middle.size(), " needs ");
}

/// The parser asks for a command even where there is one that it does not know.
std::string usageError(const CLI::App& program, const CLI::ParseError& error) {
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
        return needText(error.what());
    const std::vector<std::string> rest = program.remaining(true);
    if (dynamic_cast<const CLI::RequiredError*>(&error) == nullptr || rest.empty() ||
        rest.front().starts_with('-'))
        return error.what();
    return rest.front() + " is not a command";
}

/// Help and version are asked for; everything else is wrong usage.
ExitStatus answer(const CLI::App& program, const CLI::ParseError& error) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
        complain(usageError(program, error) + "; see " + commandName(program) + " --help");
        return ExitStatus::Unusable;
    }
    if (dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr)
        print(program.version() + "\n");
    else
        print(program.help());
    return ExitStatus::Well;
}

ExitStatus runCommand(std::vector<std::string> arguments) {
    CLI::App program("Prepares message displays of the series Ulvo LX-400D without a window.", "orvista");
    program.set_version_flag("--version", "orvista " ORVISTA_RELEASE, "Print the version and end");
    program.require_subcommand(1);
    for (const char* const word : {"REQUIRED", "TEXT"}) // help needs no words for what is usual
        program.get_formatter()->label(word, "");
    program.footer("Examples:\n"
                   "  orvista check PUMPSTATION.orx\n"
                   "  orvista addresses PUMPSTATION.orx -o addresses.csv\n"
                   "  orvista messages --help\n\n"
                   "Exit status: 0 all well, 1 something found, different or failed, 2 wrong usage or "
                   "unreadable input.");
    Run run;
    addCheck(program, run);
    addShow(program, run);
    addAddresses(program, run);
    addMessages(program, run);
    addVariables(program, run);
    addCompare(program, run);
    addNew(program, run);
    addUpload(program, run);
    addDownload(program, run);
    addUploadWorker(program, run);
    addDownloadWorker(program, run);
    addRead(program, run);
    addSwitch(program, run);
    addWrite(program, run);
    try {
        std::ranges::reverse(arguments); // as the parser takes them
        program.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        return answer(program, error);
    }
    return run();
}

} // namespace

int runProgram(std::vector<std::string> arguments) {
    const StandardStreams streams;
    ExitStatus status = ExitStatus::Found;
    try {
        status = runCommand(std::move(arguments));
        finishOutput();
    } catch (const CommandFailure& failure) {
        complain(failure.what());
        status = failure.status();
    } catch (const std::exception& failure) {
        complain(failure.what());
    }
    return static_cast<int>(status);
}

} // namespace orvista::console
