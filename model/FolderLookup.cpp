#include "model/FolderLookup.h"

#include "model/SystemPath.h"
#include "model/Text.h"

#include <filesystem>
#include <system_error>

namespace orvista {

namespace {

namespace fs = std::filesystem;

bool isThere(const std::string& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(systemPath(path), error));
}

/// The first in byte order of the folder's entries that differ from `name` in case only; empty when none.
std::string variantInFolder(const std::string& folder, const std::string& name) {
    std::string found;
    std::error_code error;
    for (fs::directory_iterator entry(systemPath(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string candidate = utf8Path(entry->path().filename());
        if (equalsIgnoringCase(candidate, name) && (found.empty() || candidate < found))
            found = candidate;
    }
    return found;
}

/// The first of the preferred names that exists, else any variant, else the first preferred name.
template <typename... Names>
std::string onDisk(const PathRules& rules, const std::string& folder, const std::string& first,
                   const Names&... others) {
    for (const std::string& name : {first, others...}) {
        if (std::string path = rules.join(folder, name); isThere(path))
            return path;
    }
    const std::string variant = variantInFolder(rules.join(folder, {}), first);
    return rules.join(folder, variant.empty() ? first : variant);
}

} // namespace

std::string deviceFileOnDisk(const PathRules& rules, const std::string& path) {
    const auto parts = rules.split(path);
    return parts ? onDisk(rules, parts->folder, lowerAscii(parts->name)) : path;
}

std::string projectFileOnDisk(const PathRules& rules, const std::string& path) {
    const SplitPath parts = rules.split(path).value_or(SplitPath{".", path});
    return onDisk(rules, parts.folder, parts.name, lowerAscii(parts.name));
}

} // namespace orvista
