#include "script/WizardLists.h"

#include "model/Item.h"

namespace orvista::wizard {

namespace {

std::array<FieldSource, fieldSourceCount> listedFieldSources() {
    static_assert(fieldSourceCount == booleanVariableCount + floatVariableCount + clockStyles.size());
    std::array<FieldSource, fieldSourceCount> sources;
    auto next = sources.begin();
    for (std::size_t index = 0; index < booleanVariableCount; ++index)
        *next++ = {nameOf({Kind::Boolean, index}), LiveValue::Boolean, index};
    for (std::size_t index = 0; index < floatVariableCount; ++index)
        *next++ = {nameOf({Kind::Float, index}), LiveValue::Float, index};
    for (const ClockStyle& clock : clockStyles)
        *next++ = {std::string(clock.shown), clock.value, 0};
    return sources;
}

} // namespace

const std::array<FieldSource, fieldSourceCount>& fieldSources() {
    static const auto sources = listedFieldSources();
    return sources;
}

std::size_t fieldSourcePosition(LiveValue value, std::size_t index) {
    if (value == LiveValue::Boolean)
        return index;
    if (value == LiveValue::Float)
        return booleanVariableCount + index;
    const auto clock = std::ranges::find(clockStyles, value, &ClockStyle::value);
    return booleanVariableCount + floatVariableCount + static_cast<std::size_t>(clock - clockStyles.begin());
}

} // namespace orvista::wizard
