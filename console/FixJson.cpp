#include "console/FixJson.h"

#include "model/Windows1252.h"

#include <nlohmann/json.hpp>

namespace orvista::console {

namespace {

using Json = nlohmann::ordered_json;

Json editObject(const FixEdit& edit) {
    const std::string text = utf8FromWindows1252(edit.text);
    if (edit.field != nullptr)
        return {{"variable", nameOf(edit.item)}, {"field", edit.field->name}, {"new", text}};
    return {{"line", edit.line}, {"column", edit.column}, {"length", edit.length}, {"new", text}};
}

} // namespace

Json findingObject(const std::string& project, const Finding& finding) {
    return {{"project", project},
            {"item", nameOf(finding.place)},
            {"line", finding.place.line},
            {"column", finding.place.column},
            {"severity", severityName(finding.severity())},
            {"code", finding.rule().name},
            {"text", finding.text}};
}

Json fixObject(const Fix& fix) {
    Json edits = Json::array();
    for (const FixEdit& edit : fix.edits)
        edits.push_back(editObject(edit));
    return {{"caption", fix.caption}, {"edits", edits}};
}

} // namespace orvista::console
