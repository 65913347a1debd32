#include "model/FolderLookup.h"
#include "model/Item.h"
#include "model/ProjectFile.h"
#include "tests/fuzz/ReaderRun.h"

#include <algorithm>

/// Any bytes are a path: it splits and joins to itself, and names of projects and items come out of it whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const std::string path(testing::inputBytes(data, size));
    for (const PathRules& rules : {PathRules::posix(), PathRules::windows()}) {
        if (const auto parts = rules.split(path)) {
            testing::require(parts->name.find_first_of(rules.separators) == std::string::npos);
            testing::require(parts->folder.size() + 1 + parts->name.size() == path.size());
            testing::require(path.starts_with(parts->folder) && path.ends_with(parts->name));
        }
        testing::require(rules.nativeForm(path).size() == path.size());
    }
    testing::require(path.starts_with(DocMgrModule::projectNameOfFile(path)));
    if (const auto item = itemNamed(path))
        testing::require(std::ranges::count(allItems(), *item) == 1 && itemNamed(nameOf(*item)) == item);
    if (const auto item = itemOfKey(path))
        testing::require(std::ranges::count(allItems(), *item) == 1 && itemOfKey(keyOf(*item)) == item);
    return 0;
}
