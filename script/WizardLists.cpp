#include "script/WizardLists.h"

#include "model/Project.h"

#include <algorithm>

namespace orvista::wizard {

namespace {

std::array<std::string, fieldSourceCount> listedFieldSources() {
    static_assert(fieldSourceCount == booleanVariableCount + floatVariableCount + clockFields.size());
    std::array<std::string, fieldSourceCount> sources;
    auto next = sources.begin();
    for (std::size_t number = 1; number <= booleanVariableCount; ++number)
        *next++ = booleanVariableName + std::to_string(number);
    for (std::size_t number = 1; number <= floatVariableCount; ++number)
        *next++ = floatVariableName + std::to_string(number);
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
