#include "console/JsonText.h"

#include <nlohmann/json.hpp>

namespace orvista::console {

namespace {

std::string dumped(const nlohmann::ordered_json& document, int indent) {
    return document.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace

std::string jsonText(const nlohmann::ordered_json& document) {
    return dumped(document, 2);
}

std::string jsonLine(const nlohmann::ordered_json& document) {
    return dumped(document, -1);
}

} // namespace orvista::console
