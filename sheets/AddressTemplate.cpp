#include "sheets/AddressTemplate.h"

#include "model/JsonText.h"
#include "model/Windows1252.h"

#include <array>

namespace orvista {

namespace {

constexpr std::array<std::string_view, 4> kindNames{"float", "boolean", "emergency", "regular"};

/// Strings of JSON are strings of YAML, too.
void addJsonStrings(TemplateTexts& texts) {
    TemplateTexts quoted;
    for (const auto& [name, text] : texts)
        quoted.emplace(name + "_json", jsonString(text));
    texts.merge(quoted);
}

/// What stands for yes in a section; no is empty.
std::string yes(bool isSo) {
    return isSo ? "1" : "";
}

TemplateTexts rowTexts(const AddressRow& row, const PlcVariable& variable) {
    TemplateTexts texts;
    const auto cells = addressCells(row);
    for (std::size_t column = 0; column < addressColumnCount; ++column)
        texts.emplace(addressColumns[column], cells[column]);
    texts.emplace("variable", variable.name);
    texts.emplace("initial", variable.initial);
    texts.emplace("description", variable.text);
    texts.emplace("byte_order", row.wordOrder.empty() ? "" : byteOrder);
    addJsonStrings(texts);
    for (const std::string_view kind : kindNames)
        texts.emplace(kind, yes(row.kind == kind));
    texts.emplace("used", yes(row.isUsed));
    texts.emplace("first", "");
    texts.emplace("last", "");
    return texts;
}

TemplateTexts headTexts(const PlcVariables& variables, const Project& project, const AddressHead& head) {
    TemplateTexts texts{{"project", project.ProjName},     {"file", projectFileNameOf(project)},
                        {"display", head.display},         {"device", utf8FromWindows1252(project.IP)},
                        {"fingerprint", head.fingerprint}, {"time", head.time},
                        {"release", head.release},         {"prefix", variables.prefix}};
    addJsonStrings(texts);
    return texts;
}

} // namespace

TemplateValues addressTemplateValues(std::span<const AddressRow> rows, const PlcVariables& variables,
                                     const Project& project, const AddressHead& head) {
    TemplateValues values;
    values.texts = headTexts(variables, project, head);
    for (const std::string_view name : {"items", "coils", "not_addressable"})
        values.lists.emplace(name, std::vector<TemplateTexts>());
    for (const std::string_view kind : kindNames)
        values.lists.emplace(kind, std::vector<TemplateTexts>());
    for (const auto& [name, text] : rowTexts(AddressRow(), PlcVariable()))
        values.rowNames.push_back(name);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const TemplateTexts texts = rowTexts(rows[i], variables.items[i]);
        if (!variables.items[i].isAddressable) {
            values.lists["not_addressable"].push_back(texts);
            continue;
        }
        values.lists["items"].push_back(texts);
        values.lists[std::string(rows[i].kind)].push_back(texts);
        if (rows[i].item.kind != Kind::Float)
            values.lists["coils"].push_back(texts);
    }
    for (auto& [name, list] : values.lists)
        if (!list.empty()) {
            list.front()["first"] = yes(true);
            list.back()["last"] = yes(true);
        }
    return values;
}

} // namespace orvista
