#include "console/Commands.h"

#include "console/GivenProject.h"
#include "console/ListHead.h"
#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/ReadFiles.h"
#include "items/AddressList.h"
#include "model/Files.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "sheets/AddressSheet.h"
#include "sheets/AddressTemplate.h"
#include "sheets/PlcOpenXml.h"
#include "sheets/StructuredText.h"

#include <CLI/App.hpp>

#include <array>
#include <memory>
#include <optional>
#include <system_error>

namespace orvista::console {

namespace {

struct AddressesOptions {
    std::string project;
    std::vector<std::string> displays; ///< of a master
    std::string output;
    std::string separator = ",";
    std::string prefix;
    std::string templateFile;
    bool utf8 = false;
    bool usedOnly = false;
    bool json = false;
    bool notWhole = false;
};

enum class Format { Csv, Html, Json, StructuredText, PlcOpenXml, Template };

struct FormatEnding {
    std::string_view ending;
    Format format;
};
constexpr auto endings = std::to_array<FormatEnding>({{".csv", Format::Csv},
                                                      {".html", Format::Html},
                                                      {".htm", Format::Html},
                                                      {".json", Format::Json},
                                                      {".st", Format::StructuredText},
                                                      {".xml", Format::PlcOpenXml}});

Format formatOf(const AddressesOptions& options) {
    if (!options.templateFile.empty())
        return Format::Template;
    if (options.output.empty())
        return options.json ? Format::Json : Format::Csv;
    for (const auto& [ending, format] : endings)
        if (endsWithIgnoringCase(options.output, ending) && (!options.json || format == Format::Json))
            return format;
    throw CommandFailure(ExitStatus::Unusable,
                         options.output + (options.json
                                               ? " does not end in .json"
                                               : " does not end in .csv, .html, .json, .st or .xml"));
}

/// \throws CommandFailure for options that the format has no use for
void expectFormat(const AddressesOptions& options, Format format) {
    const bool hasNames =
        format == Format::StructuredText || format == Format::PlcOpenXml || format == Format::Template;
    if (options.json && format == Format::Template)
        throw CommandFailure(ExitStatus::Unusable, "--template and --json exclude each other");
    if (!options.prefix.empty() && !hasNames)
        throw CommandFailure(ExitStatus::Unusable, "--prefix goes with a file .st or .xml, or --template");
    if (options.utf8 && format != Format::StructuredText)
        throw CommandFailure(ExitStatus::Unusable, "--utf8 goes with a file .st");
    if (const std::string fault = plcPrefixFault(options.prefix); !fault.empty())
        throw CommandFailure(ExitStatus::Unusable, "--prefix: " + quotation(options.prefix) + " " + fault);
}

char separatorOf(const AddressesOptions& options) {
    if (options.separator == "tab" || options.separator == "\\t")
        return '\t';
    if (options.separator.size() == 1 &&
        std::string_view(",;\t").find(options.separator) != std::string_view::npos)
        return options.separator.front();
    throw CommandFailure(ExitStatus::Unusable, "--separator takes a comma, a semicolon or \"tab\"");
}

/// Tells of each item whose name is none, or another's. \throws CommandFailure where there is one
PlcVariables variablesOf(std::span<const AddressRow> rows, const Project& project,
                         const std::string& prefix) {
    const PlcNames names = plcNames(rows, prefix);
    for (const std::string& fault : names.faults)
        complain(fault);
    if (!names.faults.empty())
        throw CommandFailure(ExitStatus::Unusable, countedText(names.faults.size(), "name") +
                                                       " cannot be used; nothing is written");
    return plcVariables(rows, names, prefix, project);
}

/// \throws CommandFailure for a file that cannot be read, is too long, or is no template
std::string fromTemplate(const std::string& path, const TemplateValues& values) {
    try {
        FileSource file(path);
        return filledTemplate(bytesUpTo(file, mostTemplateBytes + 1), values);
    } catch (const std::system_error& failure) {
        throw CommandFailure(ExitStatus::Unusable, path + ": " + failure.code().message());
    } catch (const TemplateFault& fault) {
        throw CommandFailure(ExitStatus::Unusable, path + ": " + fault.what());
    }
}

std::string listIn(Format format, std::span<const AddressRow> rows, const Project& project,
                   const ProjectNotes& notes, const AddressesOptions& options) {
    if (format == Format::Csv)
        return addressCsv(rows, separatorOf(options));
    const AddressHead head = listHead(project, notes, presentMoment());
    if (format == Format::Html)
        return addressHtml(rows, project, head);
    if (format == Format::Json)
        return addressJson(rows, project, head);
    const PlcVariables variables = variablesOf(rows, project, options.prefix);
    if (format == Format::Template)
        return fromTemplate(options.templateFile, addressTemplateValues(rows, variables, project, head));
    if (format == Format::PlcOpenXml)
        return plcOpenXml(variables, project, head);
    return structuredText(variables, project, head,
                          options.utf8 ? StructuredTextLetters::Utf8 : StructuredTextLetters::Ascii);
}

ExitStatus listAddressesOf(const ProjectView& view, Format format, const AddressesOptions& options) {
    const std::string output = fileOfDisplay(options.output, options.displays, view);
    ReadFiles files;
    files.addProject(options.project);
    files.add(options.templateFile);
    files.expectApart(output);
    expectFilled(view);
    auto rows = addressList(view.project, options.usedOnly ? AddressRows::UsedOnly : AddressRows::All);
    addNotes(rows, view.notes);
    const std::string text = listIn(format, rows, view.project, view.notes, options);
    if (output.empty())
        print(text, Reader::Program);
    else
        writeFile(output, text);
    return ExitStatus::Well;
}

ExitStatus listAddresses(const AddressesOptions& options) {
    const Format format = formatOf(options);
    separatorOf(options);
    expectFormat(options, format);
    if (options.output.empty() && mayNameSeveral(options.displays))
        throw CommandFailure(ExitStatus::Unusable, "the lists of several displays are written with -o");
    GivenProject given(options.project, readWholeProject(options.project, options.notWhole));
    return given.eachView(options.displays,
                          [&](const ProjectView& view) { return listAddressesOf(view, format, options); });
}

} // namespace

void addAddresses(CLI::App& program, Run& run) {
    const auto options = std::make_shared<AddressesOptions>();
    CLI::App* command =
        program.add_subcommand("addresses", "List the Modbus address of every variable and message");
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command
        ->add_option("-o,--output", options->output,
                     "The file to write: .csv, .html, .json, .st (Structured Text)\n"
                     "or .xml (PLCopen)")
        ->type_name("FILE");
    command->add_flag("--used", options->usedOnly,
                      "Only variables that a message shows, and messages that draw");
    command
        ->add_option("--separator", options->separator, "Between the cells of CSV: \",\", \";\" or \"tab\"")
        ->type_name("CHARACTER");
    command->add_flag("--json", options->json, "JSON instead of CSV");
    command
        ->add_option("--prefix", options->prefix,
                     "Before each name in a file .st or .xml or a template, such as LINE3_")
        ->type_name("TEXT");
    command
        ->add_option("--template", options->templateFile,
                     "Fill this file, such as one of share/templates, and write what it makes")
        ->type_name("TEMPLATE");
    command->add_flag("--utf8", options->utf8, "Comments of a file .st in UTF-8, else in plain ASCII");
    addDisplayNames(*command, options->displays);
    addNotWhole(*command, options->notWhole);
    command->footer(
        "Examples:\n"
        "  orvista addresses PUMPSTATION.orx\n"
        "  orvista addresses PUMPSTATION.orx --used -o addresses.html\n"
        "  orvista addresses PUMPSTATION.orx --separator \";\" -o addresses.csv\n"
        "  orvista addresses PUMPSTATION.orx --prefix LINE3_ -o display.st\n"
        "  orvista addresses PUMPSTATION.orx --template home-assistant.yaml -o modbus.yaml\n\n"
        "Addresses count from 0, as in the request; references such as 40101 or 00321 count from 1. A\n"
        "spreadsheet takes the zeros in front of a reference away, and 1/2 for a date, unless the\n"
        "columns are imported as text. In a file .st or .xml an item is called by its label, else by\n"
        "its own name.");
    command->callback([options, &run] { run = [options] { return listAddresses(*options); }; });
}

} // namespace orvista::console
