#include "console/Commands.h"

#include "check/Mending.h"
#include "console/NewFolder.h"
#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/ReadFiles.h"
#include "model/Bytes.h"
#include "model/PathRules.h"
#include "model/Quotation.h"

#include <CLI/App.hpp>

#include <memory>
#include <system_error>

/// A project that is not whole, made whole with the device files beside it.
namespace orvista::console {

namespace {

struct MendOptions {
    std::string project;
    std::string folder;
    std::string output;
};

std::string folderOfDeviceFiles(const MendOptions& options) {
    return options.folder.empty() ? folderOfProject(options.project) : options.folder;
}

Mended mendedOf(const MendOptions& options) {
    try {
        return mendedProject(options.project, folderOfDeviceFiles(options), PathRules::native());
    } catch (const OpenFailure&) {
        throw CommandFailure(ExitStatus::Unusable, "Unable to open " + options.project);
    } catch (const std::system_error& failure) {
        throw CommandFailure(ExitStatus::Unusable, options.project + ": " + failure.code().message());
    }
}

ExitStatus mendProject(const MendOptions& options) {
    expectProject(options.project);
    const std::string output = writtenProjectName(options.output);
    expectNoOtherProject(options.project, output);
    ReadFiles files;
    files.addProject(options.project);
    files.addFolder(folderOfDeviceFiles(options));
    files.expectApart(output);
    const Mended mended = mendedOf(options);
    for (const std::string& fault : mended.faults)
        complain(options.project + ": " + fault);
    if (!mended.faults.empty())
        return ExitStatus::Found;
    makeFolderOf(output);
    saveProject(output, mended.project);
    copyNotesBeside(options.project, output);
    for (const Mended::Taken& taken : mended.taken)
        print(taken.section + " was taken from " + taken.path + "\n");
    if (!mended.isDisplaySure)
        printLine("The display's IP is " + deviceQuotation(mended.project.IP) +
                  " now: the project file does not say it, or not whole");
    if (mended.taken.empty())
        print("Nothing was taken: " + options.project + " is whole\n");
    return ExitStatus::Well;
}

} // namespace

void addMend(CLI::App& program, Run& run) {
    const auto options = std::make_shared<MendOptions>();
    CLI::App* command =
        program.add_subcommand("mend", "Make a project whole again with the device files beside it");
    command->add_option("PROJECT", options->project, "The project file that is not whole, .orx")->required();
    command->add_option("--from", options->folder, "The device files' folder; else the project's own")
        ->type_name("FOLDER");
    command->add_option("-o,--output", options->output, "The project to write, in a folder of its own")
        ->type_name("NEWFOLDER/NAME.orx")
        ->required();
    command->footer(
        "Examples:\n"
        "  orvista mend PUMPSTATION.orx -o mended/PUMPSTATION.orx\n"
        "  orvista mend PUMPSTATION.orx --from fetched -o mended/PUMPSTATION.orx\n\n"
        "Sections that are not whole are taken from modbus.adr, ilmvar.def, stdmsg.ilm and altmsg.ilm of\n"
        "the folder, and named. Where one of those is not whole either, nothing is written and the status\n"
        "is 1. Notes are copied; bitmaps stay where they are.");
    command->callback([options, &run] { run = [options] { return mendProject(*options); }; });
}

} // namespace orvista::console
