#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvista {

/// A path split at its last separator.
struct SplitPath {
    std::string folder; ///< everything before the separator
    std::string name;   ///< everything after it
    bool operator==(const SplitPath&) const = default;
};

/// How a platform writes paths, as a value so that both styles are tested on one machine.
struct PathRules {
    char separator;              ///< the one that is written
    std::string_view separators; ///< all that split

    static PathRules posix();
    static PathRules windows();
    static PathRules native();

    /// folder + separator + name; a folder that already ends in a separator gets no second one.
    std::string join(std::string_view folder, std::string_view name) const;
    /// Nothing when the path holds no separator.
    std::optional<SplitPath> split(std::string_view path) const;
    /// Every separator written as the platform's own.
    std::string nativeForm(std::string_view path) const;
};

} // namespace orvista
