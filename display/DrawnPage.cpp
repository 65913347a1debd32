#include "display/DrawnPage.h"

#include <utility>
#include <variant>

namespace orvista {

DrawnPage drawnPage(ScriptPage page,
                    const std::function<std::shared_ptr<const LedImage>(const std::string& name)>& image) {
    DrawnPage drawn{std::move(page)};
    for (std::size_t i = 0; i < drawn.elements.size(); ++i)
        if (const auto* const bitmap = std::get_if<ImageElement>(&drawn.elements[i])) {
            drawn.images.resize(i + 1);
            drawn.images[i] = image(bitmap->name);
        }
    return drawn;
}

} // namespace orvista
