#include "console/Commands.h"

#include "check/Rules.h"
#include "console/Output.h"
#include "console/Suggestion.h"

#include <CLI/App.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace orvista::console {

namespace {

constexpr std::string_view allCodes = "codes";

/// Breaks the lines of a paragraph between words.
std::string wrapped(std::string_view paragraph) {
    constexpr std::size_t longestLine = 79;
    std::string text;
    while (paragraph.size() > longestLine) {
        const auto end = paragraph.rfind(' ', longestLine);
        text.append(paragraph.substr(0, end)).append("\n");
        paragraph.remove_prefix(end + 1);
    }
    return text.append(paragraph).append("\n");
}

std::string indented(std::string_view lines) {
    std::string text = "  ";
    for (const char character : lines)
        text.append(1, character).append(character == '\n' ? "  " : "");
    return text + "\n";
}

std::string explanation(const Rule& rule) {
    std::string text(rule.name);
    text.append(" (").append(severityName(rule.severity)).append("): ").append(rule.title);
    const std::string mending = mendingText(rule);
    return text + "\n\n" + wrapped(rule.explanation) + "\nIt is found here:\n" + indented(rule.example) +
           "\nand not here:\n" + indented(rule.clean) + (mending.empty() ? mending : "\n" + wrapped(mending));
}

std::string listOfCodes() {
    constexpr std::size_t widestName = 19;
    constexpr std::size_t widestSeverity = 9;
    std::string text;
    for (const Rule& rule : rules()) {
        std::string line(rule.name);
        line.resize(std::max(widestName, line.size() + 1), ' ');
        line.append(severityName(rule.severity));
        line.resize(std::max(widestName + widestSeverity, line.size()), ' ');
        text.append(line).append(rule.title).append("\n");
    }
    return text + "\norvista help CODE explains one of them, with an example.\n";
}

std::vector<std::string> topics(const CLI::App& program) {
    std::vector<std::string> topics = commandNames(program);
    topics.emplace_back(allCodes);
    for (const Rule& rule : rules())
        topics.emplace_back(rule.name);
    return topics;
}

/// The command of these words, "messages import"; null when there is none.
const CLI::App* commandNamed(const CLI::App& program, const std::vector<std::string>& words) {
    const CLI::App* command = &program;
    for (const std::string& word : words) {
        if (std::ranges::count(commandNames(*command), word) == 0)
            return nullptr;
        command = command->get_subcommand(word);
    }
    return command;
}

std::string helpOf(const CLI::App& command) {
    return command.get_formatter()->make_help(&command, fullName(command), CLI::AppFormatMode::Normal);
}

ExitStatus help(const CLI::App& program, const std::vector<std::string>& words) {
    const std::string topic = CLI::detail::join(words, " ");
    if (const Rule* const rule = ruleNamed(topic); rule != nullptr)
        print(explanation(*rule));
    else if (topic == allCodes)
        print(listOfCodes());
    else if (const CLI::App* const command = commandNamed(program, words); command != nullptr)
        print(helpOf(*command));
    else
        throw CommandFailure(ExitStatus::Unusable, withSuggestion(topic + " is neither a command nor a code",
                                                                  topic, topics(program), "orvista help"));
    return ExitStatus::Well;
}

} // namespace

void addHelp(CLI::App& program, Run& run) {
    const auto words = std::make_shared<std::vector<std::string>>();
    CLI::App* command = program.add_subcommand("help", "Explain a command, or a code of the check");
    command->add_option("TOPIC", *words, "A command, a code, or \"codes\" for a list of all codes");
    command->footer("Examples:\n"
                    "  orvista help\n"
                    "  orvista help messages import\n"
                    "  orvista help codes\n"
                    "  orvista help text-cut");
    command->callback([words, &program, &run] { run = [words, &program] { return help(program, *words); }; });
}

void addVersion(CLI::App& program, Run& run) {
    CLI::App* command = program.add_subcommand("version", "Print the version");
    command->footer("Examples:\n"
                    "  orvista version");
    command->callback([&program, &run] {
        run = [&program] {
            print(program.version() + "\n");
            return ExitStatus::Well;
        };
    });
}

} // namespace orvista::console
