#include "console/Program.h"

#include "console/Commands.h"
#include "console/Output.h"
#include "console/Suggestion.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace orvista::console {

namespace {

/// Leaves out the empty line that stands for a group of options which help does not tell of.
class HelpFormatter final : public CLI::Formatter {
public:
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override {
        return CLI::detail::find_and_replace(Formatter::make_help(app, std::move(name), mode), "\n\n\n",
                                             "\n\n");
    }
};

/// The command that was to run, as far as the arguments name it.
const CLI::App& commandOf(const CLI::App& program) {
    const CLI::App* command = &program;
    while (!command->get_subcommands().empty())
        command = command->get_subcommands().front();
    return *command;
}

std::vector<std::string> optionNames(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

bool is(const CLI::ParseError& error, CLI::ExitCodes code) {
    return error.get_exit_code() == static_cast<int>(code);
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

/// The first word that nothing takes. The parser names others first: a command that is missing where there is
/// one that it does not know, a file that is missing beside an option that it does not know.
std::string usageError(const CLI::App& command, const std::vector<std::string>& rest,
                       const CLI::ParseError& error) {
    const std::string page = fullName(command) + " --help";
    const bool isOfWords = is(error, CLI::ExitCodes::RequiredError) || is(error, CLI::ExitCodes::ExtrasError);
    if (isOfWords && !rest.empty()) {
        const std::string word = rest.front().substr(0, rest.front().find('='));
        if (word.starts_with('-'))
            return withSuggestion(word + " is not an option", word, optionNames(command), page);
        if (const auto names = commandNames(command); !names.empty())
            return withSuggestion(word + " is not a command", word, names, page);
    }
    const bool isValueMissing = is(error, CLI::ExitCodes::ArgumentMismatch);
    return (isValueMissing ? needText(error.what()) : error.what()) + ("; see " + page);
}

/// Help and version are asked for, or a command is missing; everything else is wrong usage.
ExitStatus answer(const CLI::App& program, const CLI::ParseError& error) {
    if (dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr) {
        print(program.version() + "\n");
        return ExitStatus::Well;
    }
    const CLI::App& command = commandOf(program);
    const std::vector<std::string> rest = program.remaining(true);
    const bool isAskedFor = is(error, CLI::ExitCodes::Success);
    const bool isCommandMissing = is(error, CLI::ExitCodes::RequiredError) && !commandNames(command).empty();
    if (isAskedFor || (isCommandMissing && rest.empty()))
        print(program.help());
    else
        complain(usageError(command, rest, error));
    return isAskedFor ? ExitStatus::Well : ExitStatus::Unusable;
}

ExitStatus runCommand(std::vector<std::string> arguments) {
    CLI::App program("Prepares message displays of the series Ulvo LX-400D without a window.", "orvista");
    program.set_version_flag("--version", "orvista " ORVISTA_RELEASE, "Print the version and end");
    program.require_subcommand(1);
    program.formatter(std::make_shared<HelpFormatter>());
    for (const char* const word : {"REQUIRED", "TEXT"}) // help needs no words for what is usual
        program.get_formatter()->label(word, "");
    program.footer("Examples:\n"
                   "  orvista check PUMPSTATION.orx\n"
                   "  orvista addresses PUMPSTATION.orx -o addresses.csv\n"
                   "  orvista help messages import\n\n"
                   "Exit status: 0 all well, 1 something found, different or failed, 2 wrong usage or "
                   "unreadable input.");
    Run run;
    addCheck(program, run);
    addShow(program, run);
    addAddresses(program, run);
    addBook(program, run);
    addMessages(program, run);
    addVariables(program, run);
    addNames(program, run);
    addCompare(program, run);
    addFingerprint(program, run);
    addMaster(program, run);
    addExpand(program, run);
    addFix(program, run);
    addMend(program, run);
    addNew(program, run);
    addUpload(program, run);
    addDownload(program, run);
    addWorker(program, run);
    addRead(program, run);
    addSwitch(program, run);
    addWrite(program, run);
    addHelp(program, run);
    addVersion(program, run);
    try {
        std::ranges::reverse(arguments); // as the parser takes them
        program.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        return answer(program, error);
    }
    return run();
}

} // namespace

std::string fullName(const CLI::App& command) {
    const CLI::App* group = command.get_parent();
    return (group == nullptr ? "" : fullName(*group) + " ") + command.get_name();
}

std::vector<std::string> commandNames(const CLI::App& group) {
    std::vector<std::string> names;
    for (const CLI::App* command :
         group.get_subcommands([](const CLI::App* one) { return !one->get_group().empty(); }))
        names.push_back(command->get_name());
    return names;
}

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
