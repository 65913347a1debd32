#include "console/Commands.h"

#include "compare/DisplayContents.h"
#include "console/JsonText.h"
#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/ReadFiles.h"
#include "items/AddressList.h"
#include "model/Text.h"
#include "model/UtcTime.h"
#include "sheets/AddressSheet.h"

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include <memory>
#include <optional>
#include <system_error>

namespace orvista::console {

namespace {

struct AddressesOptions {
    std::string project;
    std::string output;
    std::string separator = ",";
    bool usedOnly = false;
    bool json = false;
    bool notWhole = false;
};

enum class Format { Csv, Html, Json };

Format formatOf(const AddressesOptions& options) {
    if (options.output.empty())
        return options.json ? Format::Json : Format::Csv;
    const auto endsWith = [&options](std::string_view end) {
        return endsWithIgnoringCase(options.output, end);
    };
    if (endsWith(".json"))
        return Format::Json;
    if (!options.json && endsWith(".csv"))
        return Format::Csv;
    if (!options.json && (endsWith(".html") || endsWith(".htm")))
        return Format::Html;
    throw CommandFailure(
        ExitStatus::Unusable,
        options.output + (options.json ? " does not end in .json" : " does not end in .csv, .html or .json"));
}

char separatorOf(const AddressesOptions& options) {
    if (options.separator == "tab" || options.separator == "\\t")
        return '\t';
    if (options.separator.size() == 1 &&
        std::string_view(",;\t").find(options.separator) != std::string_view::npos)
        return options.separator.front();
    throw CommandFailure(ExitStatus::Unusable, "--separator takes a comma, a semicolon or \"tab\"");
}

/// A cell that is a number everywhere is one here, too.
nlohmann::ordered_json jsonRow(const AddressRow& row) {
    nlohmann::ordered_json object;
    const auto cells = addressCells(row);
    for (std::size_t column = 0; column < addressColumnCount; ++column)
        object[std::string(addressColumns[column])] = cells[column];
    object["number"] = row.number;
    object["address"] = row.address;
    object["count"] = row.count;
    return object;
}

/// \throws CommandFailure for a bitmap that cannot be read
AddressHead headOf(const Project& project) {
    try {
        return {fingerprint(DisplayContents::ofProject(project)), utcText(presentMoment())};
    } catch (const std::system_error& failure) {
        throw CommandFailure(ExitStatus::Unusable, failure.what());
    }
}

std::string addressJson(const std::vector<AddressRow>& rows, const AddressHead& head) {
    auto list = nlohmann::ordered_json::array();
    for (const AddressRow& row : rows)
        list.push_back(jsonRow(row));
    return jsonText({{"version", programRelease},
                     {"fingerprint", head.fingerprint},
                     {"time", head.time},
                     {"addresses", std::move(list)}});
}

ExitStatus listAddresses(const AddressesOptions& options) {
    const Format format = formatOf(options);
    const char separator = separatorOf(options);
    expectApartFromProject(options.output, options.project);
    const Project project = readWholeProject(options.project, options.notWhole);
    auto rows = addressList(project, options.usedOnly ? AddressRows::UsedOnly : AddressRows::All);
    addNotes(rows, notesBeside(options.project));
    std::string text;
    switch (format) {
    case Format::Csv:
        text = addressCsv(rows, separator);
        break;
    case Format::Html:
        text = addressHtml(rows, project, headOf(project));
        break;
    case Format::Json:
        text = addressJson(rows, headOf(project));
        break;
    }
    if (options.output.empty())
        print(text, Reader::Program);
    else
        writeFile(options.output, text);
    return ExitStatus::Well;
}

} // namespace

void addAddresses(CLI::App& program, Run& run) {
    const auto options = std::make_shared<AddressesOptions>();
    CLI::App* command =
        program.add_subcommand("addresses", "List the Modbus address of every variable and message");
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command->add_option("-o,--output", options->output, "The file to write: .csv, .html or .json")
        ->type_name("FILE");
    command->add_flag("--used", options->usedOnly,
                      "Only variables that a message shows, and messages that draw");
    command
        ->add_option("--separator", options->separator, "Between the cells of CSV: \",\", \";\" or \"tab\"")
        ->type_name("CHARACTER");
    command->add_flag("--json", options->json, "JSON instead of CSV");
    addNotWhole(*command, options->notWhole);
    command->footer(
        "Examples:\n"
        "  orvista addresses PUMPSTATION.orx\n"
        "  orvista addresses PUMPSTATION.orx --used -o addresses.html\n"
        "  orvista addresses PUMPSTATION.orx --separator \";\" -o addresses.csv\n\n"
        "Addresses count from 0, as in the request; references such as 40101 or 00321 count from 1. A\n"
        "spreadsheet takes the zeros in front of a reference away, and 1/2 for a date, unless the\n"
        "columns are imported as text.");
    command->callback([options, &run] { run = [options] { return listAddresses(*options); }; });
}

} // namespace orvista::console
