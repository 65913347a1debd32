#include "console/FleetLines.h"

#include "console/Release.h"
#include "link/FleetFields.h"
#include "model/JsonText.h"
#include "model/JsonValue.h"

#include <cmath>

namespace orvista::console {

namespace {

JsonValue resultObject(const FleetResult& result) {
    return JsonValue::Object{{fleetFields::name, result.name},
                             {fleetFields::address, result.address},
                             {fleetFields::result, outcomeWord(result.end.outcome)},
                             {fleetFields::reason, result.end.reason},
                             {fleetFields::files, result.end.files},
                             {fleetFields::seconds, inHundredths(result.seconds)}};
}

} // namespace

double inHundredths(double seconds) {
    return std::round(seconds * 100) / 100;
}

std::string stateLine(const DisplayState& state) {
    return jsonLine(JsonValue::Object{{fleetFields::name, state.name},
                                      {fleetFields::address, state.address},
                                      {fleetFields::state, state.state},
                                      {fleetFields::file, state.file},
                                      {fleetFields::files, state.files},
                                      {fleetFields::of, state.of},
                                      {fleetFields::reason, state.reason},
                                      {fleetFields::seconds, inHundredths(state.seconds)}});
}

std::string resultsLine(std::span<const FleetResult> results) {
    JsonValue::Array list;
    for (const FleetResult& result : results)
        list.push_back(resultObject(result));
    return jsonLine(JsonValue::Object{{"version", programRelease}, {fleetFields::results, std::move(list)}});
}

} // namespace orvista::console
