#pragma once

#include "display/LedImage.h"
#include "script/ScriptPage.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvista {

/// A page of a script together with the images of the bitmaps that it names.
struct DrawnPage : ScriptPage {
    /// Of the elements by their numbers; shorter where no later element is a bitmap.
    std::vector<std::shared_ptr<const LedImage>> images{};

    /// Null for what is not a bitmap, and for a bitmap that draws nothing.
    const LedImage* imageOf(std::size_t element) const {
        return element < images.size() ? images[element].get() : nullptr;
    }
};

/// \param image of the bitmap of that name; null where it cannot be shown
DrawnPage drawnPage(ScriptPage page,
                    const std::function<std::shared_ptr<const LedImage>(const std::string& name)>& image);

} // namespace orvista
