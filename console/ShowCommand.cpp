#include "console/Commands.h"

#include "console/OptionChecks.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/ReadFiles.h"
#include "display/FirstSight.h"
#include "display/FolderBitmaps.h"
#include "display/PanelDrawing.h"
#include "display/PngFile.h"
#include "display/Programme.h"
#include "display/RasterAt.h"
#include "model/Item.h"
#include "model/Text.h"

#include <CLI/App.hpp>

#include <ctime>
#include <memory>
#include <optional>
#include <vector>

namespace orvista::console {

namespace {

constexpr int largestScale = 64;

struct ShowOptions {
    std::string project;
    std::vector<std::string> items;
    std::string output;
    std::optional<std::int64_t> moment;
    int columns = PanelSize::usualColumns;
    int scale = 8;
};

MessageCoils coilsOf(const std::vector<std::string>& items) {
    MessageCoils coils;
    for (const std::string& item : items) {
        const auto message = messageNamed(item);
        if (!message)
            throw CommandFailure(ExitStatus::Unusable, notAMessage(item));
        if (message->kind == Kind::Regular)
            coils.regular.set(message->index);
        else
            coils.emergency.set(message->index);
    }
    return coils;
}

LocalTime now() {
    const std::time_t seconds = std::time(nullptr);
    const std::tm* const parts = std::localtime(&seconds);
    return {parts->tm_year + 1900, parts->tm_mon + 1, parts->tm_mday,
            parts->tm_hour,        parts->tm_min,     parts->tm_sec};
}

ExitStatus showMessages(const ShowOptions& options) {
    const MessageCoils coils = coilsOf(options.items);
    if (!endsWithIgnoringCase(options.output, ".png"))
        throw CommandFailure(ExitStatus::Unusable, options.output + " does not end in .png");
    expectApartFromProject(options.output, options.project);
    const Project project = readProject(options.project);
    const Programme programme = deviceProgramme(project, coils, PlayList::inOrder(),
                                                FolderBitmaps(project.ProjPath), {options.columns});
    DisplayValues values = defaultValues(project);
    values.clock = now();
    const LedRaster raster =
        options.moment ? rasterAt(programme, values, *options.moment) : firstSight(programme, values);
    writeFile(options.output, pngFile(drawPanel(raster, options.scale)));
    return ExitStatus::Well;
}

} // namespace

void addShow(CLI::App& program, Run& run) {
    const auto options = std::make_shared<ShowOptions>();
    CLI::App* command = program.add_subcommand("show", "Draw what the display shows into a picture");
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command
        ->add_option("ITEM", options->items,
                     "Messages: " + namesOf(Kind::Regular) + ", " + namesOf(Kind::Emergency))
        ->required();
    command->add_option("-o,--output", options->output, "The picture to write")
        ->type_name("FILE.png")
        ->required();
    command
        ->add_option("--at", options->moment,
                     "Milliseconds after the messages began; without it, the first page "
                     "when its entering effect is over")
        ->type_name("MS")
        ->check(wholeNumbersFrom(0));
    command->add_option("--columns", options->columns, "Dots across the panel, 1 to 4096")
        ->type_name("N")
        ->check(wholeNumbers(1, PanelSize::maximumColumns))
        ->capture_default_str();
    command->add_option("--scale", options->scale, "Pixels of the picture for each dot, 1 to 64")
        ->type_name("N")
        ->check(wholeNumbers(1, largestScale))
        ->capture_default_str();
    command->footer(
        "Examples:\n"
        "  orvista show PUMPSTATION.orx STDMSG3 -o level.png\n"
        "  orvista show PUMPSTATION.orx STDMSG3 --at 1500 --columns 96 --scale 4 -o level.png\n"
        "  orvista show PUMPSTATION.orx STDMSG3 STDMSG4 --at 12000 -o plant.png\n\n"
        "Variables show their defaults. Several messages are played as the display plays them: one after\n"
        "the other, and only the emergency messages where there are any.");
    command->callback([options, &run] { run = [options] { return showMessages(*options); }; });
}

} // namespace orvista::console
