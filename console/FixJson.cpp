#include "console/FixJson.h"

#include "model/Windows1252.h"

namespace orvista::console {

namespace {

JsonValue editObject(const FixEdit& edit) {
    const std::string text = utf8FromWindows1252(edit.text);
    if (edit.field != nullptr)
        return JsonValue::Object{{"variable", nameOf(edit.item)}, {"field", edit.field->name}, {"new", text}};
    return JsonValue::Object{
        {"line", edit.line}, {"column", edit.column}, {"length", edit.length}, {"new", text}};
}

} // namespace

JsonValue::Object findingObject(const std::string& project, const Finding& finding) {
    return {{"project", project},
            {"item", nameOf(finding.place)},
            {"line", finding.place.line},
            {"column", finding.place.column},
            {"severity", severityName(finding.severity())},
            {"code", finding.rule().name},
            {"text", finding.text}};
}

JsonValue::Object fixObject(const Fix& fix) {
    JsonValue::Array edits;
    for (const FixEdit& edit : fix.edits)
        edits.push_back(editObject(edit));
    return {{"caption", fix.caption}, {"edits", std::move(edits)}};
}

} // namespace orvista::console
