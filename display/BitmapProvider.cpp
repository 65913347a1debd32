#include "display/BitmapProvider.h"

#include "model/Text.h"

#include <utility>

namespace orvista {

void StoredBitmaps::store(std::string_view name, std::string bytes) {
    files_[lowerAscii(name)] = std::move(bytes);
}

std::optional<std::string> StoredBitmaps::bitmap(std::string_view name) const {
    const auto found = files_.find(lowerAscii(name));
    if (found == files_.end())
        return std::nullopt;
    return found->second;
}

} // namespace orvista
