#include "compare/ProjectComparison.h"

#include "items/ProjectMessages.h"
#include "model/ItemKind.h"
#include "model/ItemState.h"
#include "model/Numbers.h"
#include "script/ScriptLines.h"

namespace orvista {

namespace {

/// Collects the fields of one item that differ.
class Fields {
public:
    void compare(std::string_view field, const std::string& before, const std::string& after) {
        if (before != after)
            differing_.push_back({field, before, after});
    }
    void addTo(std::vector<ItemDifference>& items, const std::string& item) && {
        if (!differing_.empty())
            items.push_back({item, std::move(differing_), {}});
    }

private:
    std::vector<FieldDifference> differing_;
};

void compareAddresses(const Project& before, const Project& after, std::vector<ItemDifference>& items) {
    Fields fields;
    for (const AddressField& field : addressFields)
        fields.compare(field.name, decimalText(before.*field.start), decimalText(after.*field.start));
    std::move(fields).addTo(items, addressMapName);
}

void compareVariables(const Project& before, const Project& after, std::vector<ItemDifference>& items) {
    for (std::size_t i = 0; i < floatVariableCount; ++i) {
        Fields fields;
        fields.compare("default", before.RegVar[i].defaultValue, after.RegVar[i].defaultValue);
        fields.compare("width", before.RegVar[i].width, after.RegVar[i].width);
        fields.compare("precision", before.RegVar[i].precision, after.RegVar[i].precision);
        std::move(fields).addTo(items, floatVariables.name(i));
    }
    for (std::size_t i = 0; i < booleanVariableCount; ++i) {
        Fields fields;
        fields.compare("default", before.CoilVar[i].defaultValue, after.CoilVar[i].defaultValue);
        fields.compare("on", before.CoilVar[i].onText, after.CoilVar[i].onText);
        fields.compare("off", before.CoilVar[i].offText, after.CoilVar[i].offText);
        std::move(fields).addTo(items, booleanVariables.name(i));
    }
}

} // namespace

std::vector<ItemDifference> compareItems(const Project& before, const Project& after) {
    std::vector<ItemDifference> items;
    compareAddresses(before, after, items);
    compareVariables(before, after, items);
    for (std::size_t i = 0; i < messageCount; ++i) {
        const std::string& left = messageScript(before, i);
        const std::string& right = messageScript(after, i);
        if (!equivalent(left, right))
            items.push_back({messageName(i), {}, comparedLines(left, right)});
    }
    return items;
}

ProjectDifferences compareProjects(const ComparedProject& before, const ComparedProject& after) {
    return {compareItems(before.project, after.project), compareFiles(before.bitmaps, after.bitmaps)};
}

} // namespace orvista
