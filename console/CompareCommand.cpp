#include "console/Commands.h"

#include "compare/ContentsComparison.h"
#include "console/CompareList.h"
#include "console/HeldContents.h"
#include "console/MasterRows.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/Release.h"
#include "link/FleetResult.h"
#include "model/FileNames.h"
#include "model/JsonText.h"
#include "model/JsonValue.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/Windows1252.h"

#include <CLI/App.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

/// Two projects or displays side by side.
namespace orvista::console {

namespace {

struct CompareOptions {
    std::string before;
    std::string after;
    std::vector<std::string> displays; ///< of a master
    FleetOptions fleet;                ///< for a list; "--json" counts without one, too
    bool notWhole = false;
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

std::string fileText(const HeldAnswer& difference) {
    const auto side = [](std::optional<std::uint64_t> size) {
        return size ? countedText(*size, "byte") : "not there";
    };
    std::string text = withoutControlCharacters(difference.name) + "\n- " + side(difference.sizeBefore) +
                       "\n+ " + side(difference.sizeAfter);
    if (difference.firstOffset)
        text += ", differs from byte " + decimalText(*difference.firstOffset + 1) + " onwards";
    return text + "\n";
}

/// Bitmaps that differ, but no message shows them.
std::string unshownText(const CompareOptions& options, const HeldAnswer& bitmap) {
    const std::string name = withoutControlCharacters(bitmap.name);
    const auto onlyOn = [&](const std::string& side) {
        return "only on " + withoutControlCharacters(side) + ": " + name + "\n";
    };
    switch (bitmap.state) {
    case HeldState::Missing:
        return onlyOn(options.before);
    case HeldState::Extra:
        return onlyOn(options.after);
    case HeldState::Different:
        return "not the same, but shown by no message: " + name + "\n";
    case HeldState::Same:
    case HeldState::Equal:
        break;
    }
    return {};
}

void printText(const CompareOptions& options, const ContentsComparison& comparison) {
    if (comparison.isEqual()) {
        print("No differences\n");
    } else {
        printLine("--- " + options.before);
        printLine("+++ " + options.after);
    }
    for (const ItemDifference& item : comparison.items)
        print(itemText(item));
    for (const HeldAnswer& file : comparison.unexplainedFiles())
        print(fileText(file));
    for (const HeldAnswer& bitmap : comparison.bitmaps)
        if (bitmap.counts && !bitmap.isWell())
            print(fileText(bitmap));
    for (const HeldAnswer& bitmap : comparison.bitmaps)
        if (!bitmap.counts)
            print(unshownText(options, bitmap));
}

JsonValue rowObject(const std::string& item, std::string_view field, std::size_t oldLine, std::size_t newLine,
                    const JsonValue& before, const JsonValue& after) {
    return JsonValue::Object{{"item", item},        {"field", field}, {"old_line", oldLine},
                             {"new_line", newLine}, {"old", before},  {"new", after}};
}

void addRows(const ItemDifference& difference, JsonValue::Array& list) {
    for (const Change& change : difference.fields)
        list.push_back(rowObject(nameOf(difference.item), change.field->name, 0, 0,
                                 utf8FromWindows1252(change.before), utf8FromWindows1252(change.after)));
    for (const ComparedLine& line : difference.lines) {
        const std::string text = utf8FromWindows1252(line.text);
        if (line.kind == ComparedLine::Kind::Removed)
            list.push_back(rowObject(nameOf(difference.item), "script", line.numberBefore, 0, text, nullptr));
        else if (line.kind == ComparedLine::Kind::Added)
            list.push_back(rowObject(nameOf(difference.item), "script", 0, line.numberAfter, nullptr, text));
    }
}

std::string_view stateWord(HeldState state) {
    constexpr std::array<std::string_view, 5> words{"same", "equal", "different", "missing", "extra"};
    return words.at(static_cast<std::size_t>(state));
}

JsonValue fileObject(const HeldAnswer& difference) {
    const auto number = [](std::optional<std::uint64_t> value) {
        return value ? JsonValue(*value) : JsonValue();
    };
    return JsonValue::Object{{"name", difference.name},
                             {"state", stateWord(difference.state)},
                             {"counts", difference.counts},
                             {"old_size", number(difference.sizeBefore)},
                             {"new_size", number(difference.sizeAfter)},
                             {"first_difference", number(difference.firstOffset)}};
}

void printJson(const CompareOptions& options, const ContentsComparison& comparison) {
    JsonValue::Array list;
    for (const ItemDifference& item : comparison.items)
        addRows(item, list);
    JsonValue::Array files;
    for (const HeldAnswer& file : comparison.files)
        files.push_back(fileObject(file));
    JsonValue::Array bitmaps;
    for (const HeldAnswer& bitmap : comparison.bitmaps)
        if (!bitmap.isWell())
            bitmaps.push_back(fileObject(bitmap));
    print(jsonText(JsonValue::Object{{"version", programRelease},
                                     {"old", options.before},
                                     {"new", options.after},
                                     {"equal", comparison.isEqual()},
                                     {"differences", std::move(list)},
                                     {"files", std::move(files)},
                                     {"bitmaps", std::move(bitmaps)}}),
          Reader::Program);
}

/// Two sides that are compared once, or for one display of a master after the other.
class ComparedSides {
public:
    /// \throws CommandFailure, as all others
    explicit ComparedSides(const CompareOptions& options)
        : before_(options.before, options.notWhole), after_(options.after, options.notWhole) {}

    ContentsComparison comparison() const { return compareContents(before_.contents(), after_.contents()); }

    /// \param tell is given each comparison, and what the sides are called in it
    template <typename Tell>
    ExitStatus eachDisplay(const CompareOptions& options, Tell&& tell) {
        HeldContents& leading = before_.isMaster() ? before_ : after_;
        if (!leading.isMaster())
            throw CommandFailure(ExitStatus::Unusable, "--display takes a master");
        return leading.given()->eachView(options.displays, [&](const ProjectView& view) {
            CompareOptions titled = options;
            const DisplayContents before = contentsFor(*view.display, before_, titled.before);
            const DisplayContents after = contentsFor(*view.display, after_, titled.after);
            return tell(titled, compareContents(before, after));
        });
    }

private:
    static DisplayContents contentsFor(const FleetDisplay& display, HeldContents& side, std::string& title) {
        if (!side.isMaster())
            return side.contents();
        const auto rows = displaysNamed({display.name}, side.given()->displays());
        const ProjectView view = side.given()->of(rows.front());
        title = view.title;
        return contentsOf(view);
    }

    HeldContents before_;
    HeldContents after_;
};

void expectSides(const CompareOptions& options) {
    const FleetOptions& fleet = options.fleet;
    if (!fleet.list.empty() && !options.displays.empty())
        throw CommandFailure(ExitStatus::Unusable,
                             "--display chooses from the master's own list, not --list");
    if (!fleet.hasList() && options.after.empty())
        throw CommandFailure(ExitStatus::Unusable, "compare takes two projects or displays, or --list");
    if (!fleet.list.empty() && !options.after.empty())
        throw CommandFailure(ExitStatus::Unusable, "with --list, compare takes at most a project");
    if (fleet.wantsResults() && !fleet.hasList())
        throw CommandFailure(ExitStatus::Unusable, "--only-changes, --report and --journal take --list");
}

ExitStatus tell(const CompareOptions& options, const ContentsComparison& comparison) {
    if (options.fleet.json)
        printJson(options, comparison);
    else
        printText(options, comparison);
    return comparison.isEqual() ? ExitStatus::Well : ExitStatus::Found;
}

ExitStatus compareSides(const CompareOptions& options) {
    try {
        ComparedSides sides(options);
        return options.displays.empty() ? tell(options, sides.comparison())
                                        : sides.eachDisplay(options, &tell);
    } catch (const std::system_error& failure) { // of bitmaps, and of the folder for what is fetched
        throw CommandFailure(ExitStatus::Unusable, failure.what());
    }
}

ExitStatus compare(CompareOptions options) {
    // A master's displays are at their own addresses.
    if (options.fleet.list.empty() && options.after.empty() && !options.displays.empty())
        options.fleet.chosen = masterRows(options.before, options.displays, {});
    expectSides(options);
    if (options.fleet.chosen.size() == 1 && !options.fleet.wantsResults()) {
        options.after = displayArgument(options.fleet.chosen.front().address);
        return compareSides(options);
    }
    if (options.fleet.hasList())
        return compareList(options.fleet, options.before, options.notWhole);
    return compareSides(options);
}

} // namespace

void addCompare(CLI::App& program, Run& run) {
    const auto options = std::make_shared<CompareOptions>();
    CLI::App* command = program.add_subcommand("compare", "Tell what differs between projects and displays");
    command->add_option("A", options->before,
                        "A project file, .orx, or a display: NAME, NAME:PORT, [IPv6]:PORT");
    command->add_option("B", options->after, "What it is compared with, a project or a display");
    addDisplayNames(*command, options->displays);
    addFleetOptions(*command, options->fleet);
    command->get_option("--json")->description(
        "JSON instead of text; with --list a line for each change, the results last");
    command->add_flag("--only-changes", options->fleet.onlyChanges,
                      "With --list, leave out the displays that are equal");
    addReport(*command, options->fleet);
    addNotWhole(*command, options->notWhole);
    command->footer("Examples:\n"
                    "  orvista compare PUMPSTATION.orx 192.168.1.103\n"
                    "  orvista compare yesterday/PUMPSTATION.orx PUMPSTATION.orx\n"
                    "  orvista compare --json 192.168.1.103 192.168.1.104:7001\n"
                    "  orvista compare --list displays.csv --only-changes --report differing.csv\n"
                    "  orvista compare PLANT.orx --display \"Line 17\"\n\n"
                    "With --list, each display with its project; A is then the project of displays without "
                    "one, and\n"
                    "the results are equal, different, failed, and refused (the project cannot be read or is "
                    "not\n"
                    "whole); status 1 when one is not equal. With --display, each of these displays of a "
                    "master with\n"
                    "its own project; B is then the display at the row's address, unless it is given.\n\n"
                    "Nothing changes on either side. Bitmaps that no message shows are named and do not "
                    "count. Ends with\n"
                    "status 0 when both are equal, 1 when they differ, 2 when one cannot be read.");
    command->callback([options, &run] { run = [options] { return compare(*options); }; });
}

} // namespace orvista::console
