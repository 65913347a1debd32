#include "tests/fuzz/ReaderRun.h"

#include "items/CopiedItems.h"

/// Any bytes are on the clipboard: what was read is written and read again as the same, and its items fit
/// into a project.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const auto read = readCopied(testing::inputBytes(data, size));
    const auto* const copied = std::get_if<CopiedItems>(&read);
    if (!copied)
        return 0;
    const auto again = readCopied(copiedBytes(*copied));
    testing::require(std::get<CopiedItems>(again) == *copied);
    Project project;
    std::vector<Item> items;
    for (const CopiedItem& item : copied->items)
        items.push_back(item.item);
    const Pasted pasted = pasteOnto(project, *copied, items, items);
    testing::require(pasted.refusal.empty());
    applyChanges(project, pasted.changes);
    testing::require(copiedItems(project, items).items == copied->items);
    return 0;
}
