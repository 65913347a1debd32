#include "console/FleetLines.h"

#include "console/JsonText.h"
#include "link/FleetFields.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace orvista::console {

namespace {

using Json = nlohmann::ordered_json;

double inHundredths(double seconds) {
    return std::round(seconds * 100) / 100;
}

Json resultObject(const FleetResult& result) {
    return {{fleetFields::name, result.name},
            {fleetFields::address, result.address},
            {fleetFields::result, outcomeWord(result.end.outcome)},
            {fleetFields::reason, result.end.reason},
            {fleetFields::files, result.end.files},
            {fleetFields::seconds, inHundredths(result.seconds)}};
}

} // namespace

std::string stateLine(const DisplayState& state) {
    return jsonLine({{fleetFields::name, state.name},
                     {fleetFields::address, state.address},
                     {fleetFields::state, state.state},
                     {fleetFields::file, state.file},
                     {fleetFields::files, state.files},
                     {fleetFields::of, state.of},
                     {fleetFields::reason, state.reason},
                     {fleetFields::seconds, inHundredths(state.seconds)}});
}

std::string resultsLine(std::span<const FleetResult> results) {
    Json list = Json::array();
    for (const FleetResult& result : results)
        list.push_back(resultObject(result));
    return jsonLine({{"version", programRelease}, {fleetFields::results, std::move(list)}});
}

} // namespace orvista::console
