#include "model/BitmapFiles.h"

#include "model/BitmapName.h"
#include "model/SystemPath.h"
#include "model/Text.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace orvista {

std::vector<std::string> bitmapsOfFolder(const std::string& folder) {
    namespace fs = std::filesystem;
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(systemPath(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknownType;
        std::string name = utf8Path(entry->path().filename());
        if (isBitmapName(name) && entry->is_regular_file(unknownType))
            names.push_back(std::move(name));
    }
    return bitmapsAmong(std::move(names));
}

std::vector<std::string> bitmapsAmong(std::vector<std::string> names) {
    std::erase_if(names, [](const std::string& name) { return !isBitmapName(name); });
    // Names that differ in case only are told apart by their bytes, so that the order never varies.
    std::ranges::sort(names, {}, [](const std::string& name) { return std::pair(lowerAscii(name), name); });
    return names;
}

} // namespace orvista
