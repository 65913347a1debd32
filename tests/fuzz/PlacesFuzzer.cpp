#include "tests/fuzz/ReaderRun.h"

#include "items/Master.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <memory>

namespace {

using namespace orvista;

/// A row whose columns "a" and "b" hold what the input ends with.
FleetDisplay rowWith(std::string_view value) {
    FleetDisplay display;
    display.name = "a";
    display.address = {"10.0.0.1", 7000};
    display.values = {std::make_shared<const ListedValues::Names>(ListedValues::Names{"a", "B"}),
                      {utf8FromWindows1252(value), std::string(value)}};
    return display;
}

/// Places follow each other and lie within their lines.
void checkPlaces(std::string_view text, const std::vector<TextPlace>& places) {
    std::size_t end = 0;
    for (const TextPlace& place : places) {
        testing::require(place.at >= end && place.length >= 2 && place.at + place.length <= text.size());
        testing::require(text[place.at] == '{' && place.width <= widestPlace);
        testing::require(text.substr(place.at, place.length).find_first_of("\r\n") == std::string_view::npos);
        end = place.at + place.length;
    }
}

} // namespace

/// Any bytes are a script and an ON text, and what follows the last tab is a value for their places.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = testing::inputBytes(data, size);
    const std::size_t tab = std::min(bytes.rfind('\t'), bytes.size());
    const std::string_view script = bytes.substr(0, tab);
    checkPlaces(script, placesInScript(script));
    Project project;
    project.STDMSG[0] = script;
    project.CoilVar[0].onText = script;
    const Master master(project);
    const Expansion expansion = master.expand(rowWith(bytes.substr(std::min(tab + 1, bytes.size()))));
    const std::string& filled = expansion.project.STDMSG[0];
    testing::require(std::ranges::count(filled, '\n') == std::ranges::count(script, '\n'));
    if (placesInScript(script).empty())
        testing::require(filled == script && master.itself().STDMSG[0] == script);
    for (std::size_t column = 1; column < 40; ++column) {
        const Place place = master.inMaster({{Kind::Regular, 0}, 1, column, column % 5});
        testing::require(place.line == 1 && place.column >= 1);
    }
    for (const PlaceError& error : expansion.errors)
        testing::require(!error.text.empty() && error.display == "a");
    return 0;
}
