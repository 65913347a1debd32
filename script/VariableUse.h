#pragma once

#include "model/Project.h"
#include "script/ScriptPage.h"

#include <bitset>
#include <vector>

namespace orvista {

/// Which variables are shown somewhere.
struct VariableUse {
    std::bitset<floatVariableCount> floats;
    std::bitset<booleanVariableCount> booleans;
    bool operator==(const VariableUse&) const = default;

    VariableUse& operator|=(const VariableUse& other) {
        floats |= other.floats;
        booleans |= other.booleans;
        return *this;
    }
};

VariableUse variablesShown(const ScriptPage& page);
VariableUse variablesShown(const std::vector<ScriptPage>& pages);

} // namespace orvista
