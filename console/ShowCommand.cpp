#include "console/Commands.h"

#include "console/GivenProject.h"
#include "console/NotesBeside.h"
#include "console/OptionChecks.h"
#include "console/Picture.h"
#include "console/Projects.h"
#include "console/ReadFiles.h"
#include "console/ValuesOption.h"
#include "display/FirstSight.h"
#include "display/Programme.h"
#include "display/RasterAt.h"
#include "model/Item.h"

#include <CLI/App.hpp>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace orvista::console {

namespace {

struct ShowOptions {
    std::string project;
    std::vector<std::string> items;
    std::vector<std::string> displays; ///< of a master
    PictureOptions picture;
    std::optional<std::int64_t> moment;
    std::string values = "default";
};

MessageCoils coilsOf(const std::vector<std::string>& items, const ProjectNotes& notes) {
    MessageCoils coils;
    for (const std::string& item : items) {
        const auto message = itemCalled(item, notes);
        if (!message || !isMessage(*message))
            throw CommandFailure(ExitStatus::Unusable, notAMessage(item));
        if (message->kind == Kind::Regular)
            coils.regular.set(message->index);
        else
            coils.emergency.set(message->index);
    }
    return coils;
}

ExitStatus showView(const ProjectView& view, const ShowOptions& options, PictureOptions picture) {
    const MessageCoils coils = coilsOf(options.items, view.notes);
    picture.columns = panelColumns(picture.columns, view.notes);
    expectPicture(picture);
    expectFilled(view);
    const DisplayValues values = namedValues(options.values, view.project, view.notes).at(localTimeNow());
    const ViewBitmaps bitmaps(view);
    const Programme programme =
        deviceProgramme(view.project, coils, PlayList::inOrder(), bitmaps.provider(), {picture.width()});
    const LedRaster raster =
        options.moment ? rasterAt(programme, values, *options.moment) : firstSight(programme, values);
    return writePicture(picture, raster, programme, bitmaps.provider());
}

ExitStatus showMessages(const ShowOptions& options) {
    GivenProject given(options.project, readProject(options.project));
    return given.eachView(options.displays, [&](const ProjectView& view) {
        PictureOptions picture = options.picture;
        picture.file = fileOfDisplay(picture.file, options.displays, view);
        expectApartFromProject(picture.file, options.project);
        return showView(view, options, std::move(picture));
    });
}

} // namespace

void addShow(CLI::App& program, Run& run) {
    const auto options = std::make_shared<ShowOptions>();
    CLI::App* command = program.add_subcommand("show", "Draw what the display shows into a picture");
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command
        ->add_option("ITEM", options->items,
                     "Messages: " + namesOf(Kind::Regular) + ", " + namesOf(Kind::Emergency) +
                         ", or their labels")
        ->required();
    command->add_option("-o,--output", options->picture.file, "The picture to write")
        ->type_name("FILE.png")
        ->required();
    command
        ->add_option("--at", options->moment,
                     "Milliseconds after the messages began; without it, the first page "
                     "when its entering effect is over")
        ->type_name("MS")
        ->check(wholeNumbersFrom(0));
    addDisplayNames(*command, options->displays);
    addPictureSize(*command, options->picture);
    command
        ->add_option(
            "--values", options->values,
            "What the fields show: default, widest, smallest, stars (numbers that do not fit), values "
            "such as RegVar1=-99.9,CoilVar2=on, or what orvista read --json printed")
        ->type_name("VALUES")
        ->capture_default_str();
    command->footer("Examples:\n"
                    "  orvista show PUMPSTATION.orx STDMSG3 -o level.png\n"
                    "  orvista show PUMPSTATION.orx STDMSG3 --at 1500 --columns 96 --scale 4 -o level.png\n"
                    "  orvista show PUMPSTATION.orx STDMSG3 STDMSG4 --at 12000 -o plant.png\n"
                    "  orvista show PUMPSTATION.orx STDMSG3 --values widest -o level.png\n"
                    "  orvista show PLANT.orx STDMSG3 --display all -o level.png\n\n"
                    "Bitmaps that the display cannot show are named, and the status is 1. Several messages "
                    "are played as the display plays them: one after\n"
                    "the other, and only the emergency messages where there are any. Of several displays "
                    "of a master\nthe picture of Line 17 is \"level-Line 17.png\".");
    command->callback([options, &run] { run = [options] { return showMessages(*options); }; });
}

} // namespace orvista::console
