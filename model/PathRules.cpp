#include "model/PathRules.h"

#include <algorithm>

namespace orvista {

PathRules PathRules::posix() {
    return {'/', "/"};
}

PathRules PathRules::windows() {
    return {'\\', "\\/"};
}

PathRules PathRules::native() {
#ifdef _WIN32
    return windows();
#else
    return posix();
#endif
}

std::string PathRules::join(std::string_view folder, std::string_view name) const {
    std::string path(folder);
    if (path.empty() || separators.find(path.back()) == std::string_view::npos)
        path += separator;
    return path.append(name);
}

std::optional<SplitPath> PathRules::split(std::string_view path) const {
    const auto last = path.find_last_of(separators);
    if (last == std::string_view::npos)
        return std::nullopt;
    return SplitPath{std::string(path.substr(0, last)), std::string(path.substr(last + 1))};
}

std::string PathRules::nativeForm(std::string_view path) const {
    std::string native(path);
    std::replace_if(
        native.begin(), native.end(), [this](char c) { return separators.find(c) != std::string_view::npos; },
        separator);
    return native;
}

} // namespace orvista
