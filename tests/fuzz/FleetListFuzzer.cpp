#include "tests/fuzz/ReaderRun.h"

#include "script/Places.h"
#include "sheets/FleetSheet.h"

/// Any bytes are a list of displays: it is refused, and what can be read of it are displays that come back as
/// they are, whose names are folders of their own and whose addresses differ.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    using testing::require;
    const std::string_view bytes = testing::inputBytes(data, size);
    SheetErrors errors;
    const auto displays = readFleetSheet(bytes, {"/plant", "/plant/P.orx"}, errors);
    require(!errors.none() || !displays.empty());
    for (const FleetDisplay& display : displays) {
        require(!display.name.empty() && display.name.find_first_of("/\\:") == std::string::npos);
        require(display.name.find("..") == std::string::npos && display.name != ".");
        require(display.address.port >= 1 && display.address.port <= fileTransfer.highestPort);
        require(!display.project.empty());
    }
    if (displays.empty())
        return 0;
    SheetErrors none;
    const auto again = readFleetSheet(fleetSheet(displays), {"/", {}}, none);
    require(none.none() && again.size() == displays.size());
    for (std::size_t i = 0; i < again.size(); ++i) {
        require(again[i].name == displays[i].name && again[i].address == displays[i].address);
        require(again[i].columns == displays[i].columns);
        for (const std::string& name : displays[i].values.names())
            require(isPlaceName(name) && *again[i].values.find(name) == *displays[i].values.find(name));
    }
    return 0;
}
