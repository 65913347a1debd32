#include "script/WizardLists.h"

#include "model/ItemKind.h"

#include <algorithm>

namespace orvista::wizard {

namespace {

std::array<std::string, fieldSourceCount> listedFieldSources() {
    static_assert(fieldSourceCount == booleanVariableCount + floatVariableCount + clockFields.size());
    std::array<std::string, fieldSourceCount> sources;
    auto next = sources.begin();
    for (const ItemKind& kind : {booleanVariables, floatVariables})
        for (std::size_t index = 0; index < kind.count; ++index)
            *next++ = kind.name(index);
    std::copy(clockFields.begin(), clockFields.end(), next);
    return sources;
}

} // namespace

const std::array<std::string, fieldSourceCount>& fieldSources() {
    static const auto sources = listedFieldSources();
    return sources;
}

bool isClockField(std::string_view fieldSource) {
    return std::find(clockFields.begin(), clockFields.end(), fieldSource) != clockFields.end();
}

} // namespace orvista::wizard
