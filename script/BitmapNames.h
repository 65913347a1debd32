#pragma once

#include "model/Text.h"
#include "script/ScriptPage.h"

#include <set>
#include <string>
#include <variant>
#include <vector>

namespace orvista {

/// The bitmaps that pages name, as written (Windows-1252), each once whatever its ASCII case.
/// \param pages ScriptPages, or what is made of them
std::vector<std::string> bitmapNames(const auto& pages) {
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
