#include "display/BitmapProvider.h"

#include <utility>
#include <variant>

namespace orvista {

FoundBitmap decodedBitmap(std::string_view bytes) {
    auto result = readBitmap(bytes);
    if (const auto* error = std::get_if<BitmapError>(&result))
        return {nullptr, *error};
    return {std::make_shared<const LedImage>(std::get<LedImage>(std::move(result))), std::nullopt};
}

} // namespace orvista
