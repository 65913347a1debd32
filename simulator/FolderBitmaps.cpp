#include "simulator/FolderBitmaps.h"

#include "display/LedImage.h"
#include "model/Text.h"

namespace orvista {

std::optional<std::string> FolderBitmaps::bitmap(std::string_view name) const {
    std::optional<ListedFile> file = folder_.find(name);
    if (!file) {
        for (ListedFile& candidate : folder_.list()) {
            if (equalsIgnoringCase(candidate.name, name))
                file = std::move(candidate);
        }
    }
    if (!file || file->size > maximumBitmapBytes)
        return std::nullopt;
    return folder_.read(file->name);
}

} // namespace orvista
