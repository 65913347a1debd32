#include "model/ItemState.h"

#include "model/ItemKind.h"

#include <stdexcept>
#include <utility>

namespace orvista {

namespace {

/// Assigns all but the name, which belongs to the place.
template <typename Variable>
void assignSettings(Variable& variable, Variable value) {
    value.name = std::move(variable.name);
    variable = std::move(value);
}

} // namespace

ItemState itemState(const Project& project, std::string_view item) {
    if (const auto index = regularMessages.indexOfName(item))
        return {regularMessages.name(*index), project.STDMSG.at(*index)};
    if (const auto index = emergencyMessages.indexOfName(item))
        return {emergencyMessages.name(*index), project.ALTMSG.at(*index)};
    if (const auto index = floatVariables.indexOfName(item))
        return {floatVariables.name(*index), project.RegVar.at(*index)};
    if (const auto index = booleanVariables.indexOfName(item))
        return {booleanVariables.name(*index), project.CoilVar.at(*index)};
    if (item == addressMapName)
        return {addressMapName, AddressMap{project.AnalogInput, project.DigitalInput, project.AlertMessage,
                                           project.RegularMessage}};
    throw std::out_of_range("no item " + std::string(item));
}

std::vector<ItemState> itemStates(const Project& project, const std::vector<std::string>& items) {
    std::vector<ItemState> states;
    states.reserve(items.size());
    for (const std::string& item : items)
        states.push_back(itemState(project, item));
    return states;
}

void setItem(Project& project, const ItemState& state) {
    if (std::string* const script = scriptNamed(project, state.item)) {
        *script = std::get<std::string>(state.value);
    } else if (const auto number = floatVariables.indexOfName(state.item)) {
        assignSettings(project.RegVar.at(*number), std::get<FloatVariable>(state.value));
    } else if (const auto coil = booleanVariables.indexOfName(state.item)) {
        assignSettings(project.CoilVar.at(*coil), std::get<BooleanVariable>(state.value));
    } else if (state.item == addressMapName) {
        const auto& map = std::get<AddressMap>(state.value);
        project.AnalogInput = map.AnalogInput;
        project.DigitalInput = map.DigitalInput;
        project.AlertMessage = map.AlertMessage;
        project.RegularMessage = map.RegularMessage;
    } else {
        throw std::out_of_range("no item " + state.item);
    }
}

std::string* scriptNamed(Project& project, std::string_view message) {
    if (const auto index = regularMessages.indexOfName(message))
        return &project.STDMSG.at(*index);
    if (const auto index = emergencyMessages.indexOfName(message))
        return &project.ALTMSG.at(*index);
    return nullptr;
}

} // namespace orvista
