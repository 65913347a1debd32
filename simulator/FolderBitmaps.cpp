#include "simulator/FolderBitmaps.h"

#include "display/LedImage.h"
#include "model/Text.h"

namespace orvista {

std::optional<std::string> FolderBitmaps::bitmap(std::string_view name) const {
    std::optional<ListedFile> file = folder_.find(name);
    if (!file)
        file = findInAnyCase(name);
    if (!file || file->size > maximumBitmapBytes)
        return std::nullopt;
    return folder_.read(file->name);
}

std::optional<ListedFile> FolderBitmaps::findInAnyCase(std::string_view name) const {
    if (!byLowerCaseName_) {
        byLowerCaseName_.emplace();
        for (const ListedFile& file : folder_.list())
            byLowerCaseName_->insert_or_assign(lowerAscii(file.name), file);
    }
    const auto found = byLowerCaseName_->find(lowerAscii(name));
    return found == byLowerCaseName_->end() ? std::nullopt : std::optional(found->second);
}

} // namespace orvista
