#include "console/Commands.h"

#include "console/Displays.h"
#include "console/NotesBeside.h"
#include "console/OptionChecks.h"
#include "console/Output.h"
#include "console/Picture.h"
#include "console/Projects.h"
#include "console/ReadFiles.h"
#include "console/Release.h"
#include "display/FirstSight.h"
#include "display/FolderBitmaps.h"
#include "items/HeldValues.h"
#include "items/ItemTexts.h"
#include "link/ModbusConnection.h"
#include "link/ModbusReader.h"
#include "model/JsonText.h"
#include "model/JsonValue.h"
#include "model/Numbers.h"

#include <CLI/App.hpp>

#include <charconv>
#include <ctime>
#include <memory>
#include <optional>
#include <thread>

namespace orvista::console {

namespace {

constexpr double shortestWatch = 0.5;
constexpr double longestWatch = 3600;

struct ReadOptions {
    std::string display;
    std::string project;
    std::optional<double> watch; ///< seconds
    PictureOptions picture;      ///< none without a file
    bool json = false;
    ProjectNotes notes = {}; ///< read with the project
};

/// Numbers as people write them: the single-precision 1.1 is not 1.10000002384.
JsonValue jsonNumber(float value) {
    const std::string digits = floatText(value);
    double number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

JsonValue jsonValue(const DisplayItem& item, const ProjectNotes& notes) {
    JsonValue value;
    JsonValue::Array raw;
    if (item.isAddressable) {
        value = item.isFloat() ? jsonNumber(item.value()) : JsonValue(item.isOn());
        for (const std::uint16_t word : item.words())
            raw.push_back(word);
    }
    JsonValue::Object object{
        {"name", item.name()}, {"address", item.address}, {"value", value}, {"raw", raw}};
    for (const NoteField& field : noteFields)
        object.push_back({std::string(field.name), notes.of(item.item).*field.text});
    return object;
}

JsonValue jsonReading(const DisplayAddress& display, const std::vector<DisplayItem>& items,
                      const ProjectNotes& notes) {
    JsonValue::Array on;
    JsonValue::Array values;
    for (const DisplayItem& item : items) {
        if (!item.isMessage())
            values.push_back(jsonValue(item, notes));
        else if (item.isOn())
            on.push_back(item.name());
    }
    return JsonValue::Object{{"version", programRelease},
                             {"display", display.text()},
                             {"on", std::move(on)},
                             {"values", std::move(values)}};
}

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size() + 1, width), ' ');
    return text;
}

/// "RegVar1    100  1.5           0000 3FC0  1.500"
std::string itemLine(const DisplayItem& item, const ItemTexts& texts) {
    std::string line = padded(item.name(), 11) + padded(decimalText(item.address), 7);
    if (!item.isAddressable)
        return line + "no address\n";
    line += item.isFloat() ? padded(valueText(item), 14) + padded(wordsText(item), 11)
                           : padded(valueText(item), 25);
    const std::size_t end = line.append(texts.of(item)).find_last_not_of(' ');
    return line.substr(0, end + 1) + "\n";
}

/// Messages that are on, and every variable.
std::string wholeReading(const std::vector<DisplayItem>& items, const ItemTexts& texts) {
    std::string on;
    std::string values;
    for (const DisplayItem& item : items) {
        if (!item.isMessage())
            values += itemLine(item, texts);
        else if (item.isOn())
            on += itemLine(item, texts);
    }
    return (on.empty() ? "No message is on\n" : on) + values;
}

/// "14:05:03"
std::string timeOfDay() {
    const std::time_t seconds = std::time(nullptr);
    char text[16];
    return {text, std::strftime(text, sizeof text, "%H:%M:%S", std::localtime(&seconds))};
}

/// A display that is asked again and again: what is said when it begins to fail, fails otherwise, and answers
/// again.
class FailureNews {
public:
    FailureNews(const DisplayAddress& display, bool json) : display_(display.text()), json_(json) {}

    /// For standard output; people are told at once, on standard error.
    /// \param failure empty for an answer
    std::string line(const std::string& failure) {
        if (failure == failure_)
            return {};
        failure_ = failure;
        const std::string time = timeOfDay();
        if (!failure.empty())
            complain(time + " " + display_ + ": " + failure);
        if (json_)
            return jsonLine(JsonValue::Object{
                {"version", programRelease}, {"display", display_}, {"time", time}, {"failure", failure}});
        return failure.empty() ? time + " " + display_ + " answers again\n" : std::string();
    }

private:
    std::string display_;
    bool json_;
    std::string failure_;
};

std::string changedLines(const std::vector<DisplayItem>& before, const std::vector<DisplayItem>& items,
                         const ItemTexts& texts) {
    std::string lines;
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i] != before[i])
            lines += timeOfDay() + " " + itemLine(items[i], texts);
    return lines;
}

/// What the display should show now. It does not tell how far it is: its first page, as it stands.
ExitStatus drawReading(const PictureOptions& picture, const Project& project,
                       const std::vector<DisplayItem>& items) {
    const FolderBitmaps bitmaps(project.ProjPath);
    const Programme programme =
        deviceProgramme(project, heldCoils(items), PlayList::inOrder(), bitmaps, {picture.width()});
    DisplayValues values = heldValues(items);
    values.clock = localTimeNow();
    return writePicture(picture, firstSight(programme, values), programme, bitmaps);
}

ExitStatus readOnce(const DisplayAddress& display, const ReadOptions& options, const Project& project,
                    std::vector<DisplayItem> items, const ItemTexts& texts) {
    readFromDisplay(display, items);
    if (options.json)
        print(jsonText(jsonReading(display, items, options.notes)), Reader::Program);
    else
        print(wholeReading(items, texts));
    return options.picture.file.empty() ? ExitStatus::Well : drawReading(options.picture, project, items);
}

/// Goes on until it is ended from outside or nobody reads it any more; a display that fails may come back.
ExitStatus watch(const DisplayAddress& display, const ReadOptions& options, std::vector<DisplayItem> items,
                 const ItemTexts& texts) {
    std::optional<std::vector<DisplayItem>> before;
    FailureNews news(display, options.json);
    for (;;) {
        const auto next = std::chrono::steady_clock::now() + std::chrono::duration<double>(*options.watch);
        std::string text;
        try {
            readFromDisplay(display, items);
            text = news.line({});
            if (options.json)
                text += jsonLine(jsonReading(display, items, options.notes));
            else
                text += before ? changedLines(*before, items, texts) : wholeReading(items, texts);
            before = items;
        } catch (const DisplayFailure& failure) {
            text = news.line(failure.what());
        }
        if (!printNow(text, options.json ? Reader::Program : Reader::Person))
            return ExitStatus::Well;
        std::this_thread::sleep_until(next);
    }
}

ExitStatus readItems(ReadOptions options) {
    const DisplayAddress display = modbusAddress(options.display);
    if (options.json || !options.picture.file.empty())
        options.notes = notesBeside(options.project);
    options.picture.columns = panelColumns(options.picture.columns, options.notes);
    if (!options.picture.file.empty()) {
        expectPicture(options.picture);
        expectApartFromProject(options.picture.file, options.project);
    }
    const Project project = readProject(options.project);
    const ItemTexts texts(project);
    std::vector<DisplayItem> items = displayItems(project);
    if (const std::string beyond = unreachableItems(items); !beyond.empty())
        complain("not read, because the address map puts them beyond 0 to 65535: " + beyond);
    if (options.watch)
        return watch(display, options, std::move(items), texts);
    try {
        return readOnce(display, options, project, std::move(items), texts);
    } catch (const DisplayFailure& failure) {
        throw CommandFailure(ExitStatus::Found, display.text() + ": " + failure.what());
    }
}

void expectUseOfPicture(const CLI::App& command, const ReadOptions& options) {
    const bool hasPicture = command.count("--picture") > 0;
    if (hasPicture && options.watch)
        throw CommandFailure(ExitStatus::Unusable, "a picture is drawn once: give --picture or --watch");
    if (!hasPicture && command.count("--columns") + command.count("--scale") > 0)
        throw CommandFailure(ExitStatus::Unusable, "--columns and --scale are for a picture: give --picture");
}

} // namespace

void addRead(CLI::App& program, Run& run) {
    const auto options = std::make_shared<ReadOptions>();
    CLI::App* command = program.add_subcommand("read", "Ask a display what is on, and for every value");
    addModbusDisplay(*command, options->display)->required();
    addProjectOnDisplay(*command, options->project)->required();
    command
        ->add_option("--watch", options->watch,
                     "Ask again every SECONDS, 0.5 to 3600, and report what changes")
        ->type_name("SECONDS")
        ->check(numbers(shortestWatch, longestWatch));
    command->add_flag("--json", options->json, "JSON instead of text; with --watch an object a line");
    command->add_option("--picture", options->picture.file, "Draw what the display should show now, too")
        ->type_name("FILE.png");
    addPictureSize(*command, options->picture);
    command->footer(
        "Examples:\n"
        "  orvista read 192.168.1.103 --project PUMPSTATION.orx\n"
        "  orvista read 192.168.1.103 --project PUMPSTATION.orx --json\n"
        "  orvista read gate.example:1502 --project PUMPSTATION.orx --watch 2\n"
        "  orvista read 192.168.1.103 --project PUMPSTATION.orx --picture panel.png\n\n"
        "Tells the messages that are on with their texts, and of each variable address, value, raw words in\n"
        "hexadecimal and text. Ends with status 1 when the display does not answer as it should.");
    command->callback([command, options, &run] {
        expectUseOfPicture(*command, *options);
        run = [options] { return readItems(*options); };
    });
}

} // namespace orvista::console
