#include "console/Commands.h"
#include "model/SystemPath.h"

#include "console/Output.h"
#include "console/Projects.h"
#include "model/FolderLookup.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "model/Text.h"

#include <CLI/App.hpp>

#include <filesystem>
#include <memory>

namespace orvista::console {

namespace {

struct NewOptions {
    std::string project;
    std::string address;
};

/// Four numbers up to 255 with points between, without leading zeros, which some programs take for octal.
bool isDottedAddress(std::string_view text) {
    constexpr int numbers = 4;
    for (int number = 1; number <= numbers; ++number) {
        const std::string_view digits = text.substr(0, number < numbers ? text.find('.') : text.size());
        if (digits.size() > 3 || (digits.size() > 1 && digits.front() == '0') ||
            !GenenalModule::IsAllDigits(digits) || !wholeNumber(digits, 0, 255))
            return false;
        text.remove_prefix(std::min(digits.size() + 1, text.size()));
    }
    return true;
}

ExitStatus createProject(const NewOptions& options) {
    const std::string path = withProjectExtension(options.project);
    if (!options.address.empty() && !isDottedAddress(options.address))
        throw CommandFailure(ExitStatus::Unusable,
                             options.address + " is not an address such as 192.168.1.100");
    std::error_code error;
    if (std::filesystem::exists(
            std::filesystem::symlink_status(systemPath(projectFileOnDisk(PathRules::native(), path)), error)))
        throw CommandFailure(ExitStatus::Found, path + ": project file already exist");
    Project project;
    if (!options.address.empty())
        project.IP = options.address;
    saveProject(path, project);
    return ExitStatus::Well;
}

} // namespace

void addNew(CLI::App& program, Run& run) {
    const auto options = std::make_shared<NewOptions>();
    CLI::App* command = program.add_subcommand("new", "Make a project with the defaults of the editor");
    command->add_option("PROJECT", options->project, "The project file to make; .orx may be left out")
        ->required();
    command->add_option("--ip", options->address, "The display's address")->type_name("ADDRESS");
    command->footer(
        "Examples:\n"
        "  orvista new plant/LINE3.orx --ip 192.168.1.103\n\n"
        "Writes the project file and the five files of the display beside it. A project file that is\n"
        "there already stays as it is.");
    command->callback([options, &run] { run = [options] { return createProject(*options); }; });
}

} // namespace orvista::console
