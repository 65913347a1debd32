#include "link/FleetList.h"

#include "model/FileNames.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "model/Text.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>

namespace orvista {

namespace {

/// Keeps FOLDER/NAME/NAME.orx below the path limit.
constexpr std::size_t longestDisplayName = 100;

/// What keeps a name from being a folder's; empty where nothing does.
std::string_view faultOfName(std::string_view name) {
    if (name.empty())
        return "the name is missing";
    if (name.size() > longestDisplayName)
        return "the name is longer than 100 bytes";
    if (holdsControlCharacter(name) || name.find_first_of(refusedInNames) != std::string_view::npos ||
        name.find_first_of(refusedOnWindows) != std::string_view::npos)
        return "a name holds none of / \\ : * ? \" < > | and no line end";
    if (name.find("..") != std::string_view::npos || name.ends_with('.'))
        return "a name holds no \"..\" and does not end with a point";
    if (isReservedOnWindows(name))
        return "the name is reserved on Windows";
    return {};
}

/// An address of numbers, one of which begins with 0 and goes on: 010 is 10 to people and 8 to systems.
bool hasOctalNumber(std::string_view host) {
    if (host.find_first_not_of("0123456789.") != std::string_view::npos)
        return false;
    bool begins = true;
    for (std::size_t i = 0; i + 1 < host.size(); ++i) {
        if (begins && host[i] == '0' && host[i + 1] != '.')
            return true;
        begins = host[i] == '.';
    }
    return false;
}

class FleetReading {
public:
    explicit FleetReading(const FleetDefaults& defaults) : defaults_(defaults) {}

    void take(const FleetRow& row) {
        row_ = row.row;
        const std::size_t refusalsBefore = fleet_.refusals.size();
        // Not braced: where projectOf() throws, GCC 12 takes what was never made for something to end.
        FleetDisplay display;
        display.name = trimBlanks(row.name);
        display.project = projectOf(row);
        display.columns = row.columns;
        display.values = row.values;
        if (const auto fault = faultOfName(display.name); !fault.empty())
            refuse(fleetColumn::Name, std::string(fault));
        else
            refuseTwice(fleetColumn::Name, names_, lowerAscii(display.name));
        takeAddress(row, display.address);
        if (fleet_.refusals.size() == refusalsBefore)
            fleet_.displays.push_back(std::move(display));
    }

    Fleet result() { return std::move(fleet_); }

private:
    using Rows = std::map<std::string, std::size_t>;

    void takeAddress(const FleetRow& row, DisplayAddress& address) {
        fleetColumn::Place column = fleetColumn::Address;
        try {
            const std::string text(trimBlanks(row.address));
            const std::string port(trimBlanks(row.port));
            // The port has a column of its own here, so that a colon is the address's.
            const bool isNumericV6 = std::ranges::count(text, ':') > 1 && !text.starts_with('[');
            address = displayAddress(isNumericV6 ? "[" + text + "]" : text, fileTransfer);
            if (hasOctalNumber(address.host))
                return refuse(column,
                              "a number that begins with 0 is read as octal by some systems: write it "
                              "without the 0");
            column = fleetColumn::Port;
            if (!port.empty()) {
                const std::uint16_t number = displayPort(port, fileTransfer);
                if (address.port != fileTransfer.port && address.port != number)
                    return refuse(fleetColumn::Port, "the address names another port");
                address.port = number;
            }
            refuseTwice(fleetColumn::Address, addresses_, lowerAscii(address.text()));
        } catch (const BadDisplayAddress& fault) {
            refuse(column, fault.what());
        }
    }

    std::string projectOf(const FleetRow& row) {
        const std::string project(trimBlanks(row.project));
        if (defaults_.needsProjects && !project.empty() &&
            !endsWithIgnoringCase(project, DocMgrModule::projectExtension))
            refuse(fleetColumn::Project, "the project does not end in .orx");
        if (!project.empty())
            return utf8Path(systemPath(defaults_.folder) / systemPath(project));
        if (defaults_.needsProjects && defaults_.project.empty())
            refuse(fleetColumn::Project, "there is no project for this display");
        return defaults_.project;
    }

    void refuseTwice(fleetColumn::Place column, Rows& rows, std::string key) {
        const auto [there, isNew] = rows.emplace(std::move(key), row_);
        if (!isNew)
            refuse(column, "the same " + std::string(fleetColumns[column]) + " stands in row " +
                               decimalText(there->second) + " already");
    }

    void refuse(fleetColumn::Place column, std::string text) {
        fleet_.refusals.push_back({row_, fleetColumns[column], std::move(text)});
    }

    const FleetDefaults& defaults_;
    Fleet fleet_;
    std::size_t row_ = 0;
    Rows names_;
    Rows addresses_;
};

} // namespace

ListedValues::ListedValues(std::shared_ptr<const Names> names, std::vector<std::string> cells)
    : names_(std::move(names)), cells_(std::move(cells)) {}

const std::string* ListedValues::find(std::string_view name) const {
    const auto heads = names();
    const auto found =
        std::ranges::find_if(heads, [&](const std::string& head) { return equalsIgnoringCase(head, name); });
    return found == heads.end() ? nullptr : &cells_.at(static_cast<std::size_t>(found - heads.begin()));
}

std::span<const std::string> ListedValues::names() const {
    return names_ ? std::span<const std::string>(*names_) : std::span<const std::string>();
}

Fleet fleetOf(std::span<const FleetRow> rows, const FleetDefaults& defaults) {
    FleetReading reading(defaults);
    for (const FleetRow& row : rows)
        reading.take(row);
    return reading.result();
}

} // namespace orvista
