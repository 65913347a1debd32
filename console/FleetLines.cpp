#include "console/FleetLines.h"

#include "console/JsonText.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace orvista::console {

namespace {

using Json = nlohmann::ordered_json;

double inHundredths(double seconds) {
    return std::round(seconds * 100) / 100;
}

Json resultObject(const FleetResult& result) {
    return {{"name", result.name},
            {"address", result.address},
            {"result", outcomeWord(result.end.outcome)},
            {"reason", result.end.reason},
            {"files", result.end.files},
            {"seconds", inHundredths(result.seconds)}};
}

std::optional<TransferEnd> endOf(const Json& results) {
    if (results.size() != 1)
        return std::nullopt;
    const Json& result = results.front();
    const auto outcome = outcomeOfWord(result.at("result").get<std::string>());
    if (!outcome)
        return std::nullopt;
    return TransferEnd{*outcome, result.at("reason").get<std::string>(),
                       result.at("files").get<std::size_t>()};
}

} // namespace

std::string stateLine(const DisplayState& state) {
    return jsonLine({{"name", state.name},
                     {"address", state.address},
                     {"state", state.state},
                     {"file", state.file},
                     {"files", state.files},
                     {"of", state.of},
                     {"reason", state.reason},
                     {"seconds", inHundredths(state.seconds)}});
}

std::string resultsLine(std::span<const FleetResult> results) {
    Json list = Json::array();
    for (const FleetResult& result : results)
        list.push_back(resultObject(result));
    return jsonLine({{"version", programRelease}, {"results", std::move(list)}});
}

PrintedLine readPrintedLine(std::string_view line) {
    try {
        const Json object = Json::parse(line);
        if (object.contains("results"))
            return {std::nullopt, endOf(object.at("results"))};
        DisplayState state;
        object.at("state").get_to(state.state);
        object.at("file").get_to(state.file);
        object.at("files").get_to(state.files);
        object.at("of").get_to(state.of);
        return {std::move(state), std::nullopt};
    } catch (const Json::exception&) {
        return {};
    }
}

} // namespace orvista::console
