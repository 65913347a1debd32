#include "items/ProjectMessages.h"

#include "model/ItemKind.h"

namespace orvista {

std::string messageName(std::size_t position) {
    return position < regularMessageCount ? regularMessages.name(position)
                                          : emergencyMessages.name(position - regularMessageCount);
}

const std::string& messageScript(const Project& project, std::size_t position) {
    return position < regularMessageCount ? project.STDMSG.at(position)
                                          : project.ALTMSG.at(position - regularMessageCount);
}

std::string& messageScript(Project& project, std::size_t position) {
    return position < regularMessageCount ? project.STDMSG.at(position)
                                          : project.ALTMSG.at(position - regularMessageCount);
}

std::optional<std::size_t> messagePosition(std::string_view name) {
    if (const auto index = regularMessages.indexOfName(name))
        return index;
    if (const auto index = emergencyMessages.indexOfName(name))
        return *index + regularMessageCount;
    return std::nullopt;
}

} // namespace orvista
