#include "display/BitmapProvider.h"

#include "model/Text.h"

#include <utility>
#include <variant>

namespace orvista {

FoundBitmap decodedBitmap(std::string_view bytes) {
    auto result = readBitmap(bytes);
    if (const auto* error = std::get_if<BitmapError>(&result))
        return {nullptr, *error};
    return {std::make_shared<const LedImage>(std::get<LedImage>(std::move(result))), std::nullopt};
}

void StoredBitmaps::store(std::string_view name, std::string_view bytes) {
    files_[lowerAscii(name)] = decodedBitmap(bytes);
}

FoundBitmap StoredBitmaps::bitmap(std::string_view name) const {
    const auto found = files_.find(lowerAscii(name));
    return found == files_.end() ? FoundBitmap{} : found->second;
}

} // namespace orvista
