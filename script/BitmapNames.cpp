#include "script/BitmapNames.h"

#include "model/Text.h"

#include <set>
#include <variant>

namespace orvista {

std::vector<std::string> bitmapNames(std::span<const ScriptPage> pages) {
    std::vector<std::string> names;
    std::set<std::string> known;
    for (const ScriptPage& page : pages)
        for (const ScriptElement& element : page.elements) {
            const auto* const image = std::get_if<ImageElement>(&element);
            if (image != nullptr && known.insert(lowerAscii(image->name)).second)
                names.push_back(image->name);
        }
    return names;
}

} // namespace orvista
