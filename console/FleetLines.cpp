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

std::optional<TransferEnd> endOf(const Json& results) {
    if (results.size() != 1)
        return std::nullopt;
    const Json& result = results.front();
    const auto outcome = outcomeOfWord(result.at(fleetFields::result).get<std::string>());
    if (!outcome)
        return std::nullopt;
    return TransferEnd{*outcome, result.at(fleetFields::reason).get<std::string>(),
                       result.at(fleetFields::files).get<std::size_t>()};
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

PrintedLine readPrintedLine(std::string_view line) {
    try {
        const Json object = Json::parse(line);
        if (object.contains(fleetFields::results))
            return {std::nullopt, endOf(object.at(fleetFields::results))};
        DisplayState state;
        object.at(fleetFields::state).get_to(state.state);
        object.at(fleetFields::file).get_to(state.file);
        object.at(fleetFields::files).get_to(state.files);
        object.at(fleetFields::of).get_to(state.of);
        return {std::move(state), std::nullopt};
    } catch (const Json::exception&) {
        return {};
    }
}

} // namespace orvista::console
