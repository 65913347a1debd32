#include "model/BitmapName.h"

#include "model/Text.h"

namespace orvista {

bool isBitmapName(std::string_view name) {
    return endsWithIgnoringCase(name, ".bmp");
}

} // namespace orvista
