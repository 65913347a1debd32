#include "console/Commands.h"

#include "compare/ProjectComparison.h"
#include "console/Displays.h"
#include "console/JsonText.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "link/TransferredFiles.h"
#include "model/FileNames.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "model/Quotation.h"
#include "model/ScratchFolder.h"
#include "model/Text.h"
#include "model/Windows1252.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

/// Two projects or displays side by side.
namespace orvista::console {

namespace {

using Json = nlohmann::ordered_json;

struct CompareOptions {
    std::string before;
    std::string after;
    bool json = false;
    bool notWhole = false;
};

/// What a project or a display holds.
class Side {
public:
    /// \throws CommandFailure
    Side(const std::string& argument, bool notWhole) {
        if (endsWithIgnoringCase(argument, DocMgrModule::projectExtension)) {
            project_ = readWholeProject(argument, notWhole);
        } else {
            const DisplayAddress display = transferAddress(argument);
            fetched_.emplace();
            fetchDisplay(display, fetched_->path());
            project_ = readFetchedProject(fetched_->path(), argument);
        }
    }

    ComparedProject compared() const { return {project_, bitmapsIn(project_.ProjPath)}; }

private:
    std::optional<ScratchFolder> fetched_; ///< of a display
    Project project_;
};

/// Unchanged lines that are shown on either side of a changed one.
constexpr std::size_t linesAround = 2;

bool isChanged(const ComparedLine& line) {
    return line.kind != ComparedLine::Kind::Same;
}

bool isNearChange(const std::vector<ComparedLine>& lines, std::size_t index) {
    const std::size_t from = index - std::min(index, linesAround);
    const std::size_t end = std::min(index + linesAround + 1, lines.size());
    return std::any_of(lines.begin() + static_cast<std::ptrdiff_t>(from),
                       lines.begin() + static_cast<std::ptrdiff_t>(end), isChanged);
}

char mark(ComparedLine::Kind kind) {
    switch (kind) {
    case ComparedLine::Kind::Removed:
        return '-';
    case ComparedLine::Kind::Added:
        return '+';
    case ComparedLine::Kind::Same:
        break;
    }
    return ' ';
}

std::string linesText(const std::vector<ComparedLine>& lines) {
    std::string text;
    bool isLeftOut = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool leaveOut = !isNearChange(lines, i);
        if (!leaveOut)
            text.append(1, mark(lines[i].kind)).append(" ").append(printable(lines[i].text)).append("\n");
        else if (!isLeftOut)
            text += "  ...\n";
        isLeftOut = leaveOut;
    }
    return text;
}

std::string itemText(const ItemDifference& difference) {
    std::string text = nameOf(difference.item) + "\n";
    for (const Change& change : difference.fields) {
        for (const auto& [sign, value] : {std::pair("- ", change.before), std::pair("+ ", change.after)})
            text.append(sign).append(change.field->name).append(" ").append(printable(value)).append("\n");
    }
    return text + linesText(difference.lines);
}

std::string bitmapText(const FileDifference& difference) {
    const auto side = [](std::optional<std::uint64_t> size) {
        return size ? countedText(*size, "byte") : "not there";
    };
    std::string text = withoutControlCharacters(difference.name) + "\n- " + side(difference.sizeBefore) +
                       "\n+ " + side(difference.sizeAfter);
    if (difference.firstOffset)
        text += ", differs from byte " + decimalText(*difference.firstOffset + 1) + " onwards";
    return text + "\n";
}

void printText(const CompareOptions& options, const ProjectDifferences& differences) {
    if (differences.none())
        return print("No differences\n");
    printLine("--- " + options.before);
    printLine("+++ " + options.after);
    for (const ItemDifference& item : differences.items)
        print(itemText(item));
    for (const FileDifference& bitmap : differences.bitmaps)
        print(bitmapText(bitmap));
}

Json object(const std::string& item, std::string_view field, std::size_t oldLine, std::size_t newLine,
            const Json& before, const Json& after) {
    return {{"item", item},        {"field", field}, {"old_line", oldLine},
            {"new_line", newLine}, {"old", before},  {"new", after}};
}

void addRows(const ItemDifference& difference, Json& list) {
    for (const Change& change : difference.fields)
        list.push_back(object(nameOf(difference.item), change.field->name, 0, 0,
                              utf8FromWindows1252(change.before), utf8FromWindows1252(change.after)));
    for (const ComparedLine& line : difference.lines) {
        const std::string text = utf8FromWindows1252(line.text);
        if (line.kind == ComparedLine::Kind::Removed)
            list.push_back(object(nameOf(difference.item), "script", line.numberBefore, 0, text, nullptr));
        else if (line.kind == ComparedLine::Kind::Added)
            list.push_back(object(nameOf(difference.item), "script", 0, line.numberAfter, nullptr, text));
    }
}

Json bitmapObject(const FileDifference& difference) {
    const auto number = [](std::optional<std::uint64_t> value) { return value ? Json(*value) : Json(); };
    return {{"name", difference.name},
            {"old_size", number(difference.sizeBefore)},
            {"new_size", number(difference.sizeAfter)},
            {"first_difference", number(difference.firstOffset)}};
}

void printJson(const CompareOptions& options, const ProjectDifferences& differences) {
    Json list = Json::array();
    for (const ItemDifference& item : differences.items)
        addRows(item, list);
    Json bitmaps = Json::array();
    for (const FileDifference& bitmap : differences.bitmaps)
        bitmaps.push_back(bitmapObject(bitmap));
    print(jsonText({{"version", programRelease},
                    {"old", options.before},
                    {"new", options.after},
                    {"equal", differences.none()},
                    {"differences", std::move(list)},
                    {"bitmaps", std::move(bitmaps)}}),
          Reader::Program);
}

/// \throws CommandFailure
ProjectDifferences differencesOf(const CompareOptions& options) {
    try {
        const Side before(options.before, options.notWhole);
        const Side after(options.after, options.notWhole);
        return compareProjects(before.compared(), after.compared());
    } catch (const std::system_error& failure) { // of bitmaps, and of the folder for what is fetched
        throw CommandFailure(ExitStatus::Unusable, failure.what());
    }
}

ExitStatus compare(const CompareOptions& options) {
    const ProjectDifferences differences = differencesOf(options);
    if (options.json)
        printJson(options, differences);
    else
        printText(options, differences);
    return differences.none() ? ExitStatus::Well : ExitStatus::Found;
}

} // namespace

void addCompare(CLI::App& program, Run& run) {
    const auto options = std::make_shared<CompareOptions>();
    CLI::App* command = program.add_subcommand("compare", "Tell what differs between projects and displays");
    command
        ->add_option("A", options->before, "A project file, .orx, or a display: NAME, NAME:PORT, [IPv6]:PORT")
        ->required();
    command->add_option("B", options->after, "What it is compared with, a project or a display")->required();
    command->add_flag("--json", options->json, "JSON instead of text");
    addNotWhole(*command, options->notWhole);
    command->footer(
        "Examples:\n"
        "  orvista compare PUMPSTATION.orx 192.168.1.103\n"
        "  orvista compare yesterday/PUMPSTATION.orx PUMPSTATION.orx\n"
        "  orvista compare --json 192.168.1.103 192.168.1.104:7001\n\n"
        "Nothing changes on either side. Ends with status 0 when both are equal, 1 when they differ, "
        "2 when one cannot be read.");
    command->callback([options, &run] { run = [options] { return compare(*options); }; });
}

} // namespace orvista::console
