#pragma once

#include "check/ProjectCheck.h"
#include "tests/support/BitmapFile.h"

#include <string>
#include <vector>

namespace orvista {

/// "2:20 text-cut" for each finding, in order.
inline std::vector<std::string> placesAndCodes(const Findings& findings) {
    std::vector<std::string> texts;
    for (const Finding& finding : findings.list)
        texts.push_back(std::to_string(finding.place.line) + ":" + std::to_string(finding.place.column) +
                        " " + std::string(finding.rule().name));
    return texts;
}

/// "RegVar3 bad-default" for each finding, in order.
inline std::vector<std::string> itemsAndCodes(const Findings& findings) {
    std::vector<std::string> texts;
    for (const Finding& finding : findings.list)
        texts.push_back(nameOf(finding.place.item) + " " + std::string(finding.rule().name));
    return texts;
}

/// A black picture of 24 bits, which is a stencil, or a red one.
inline std::string pictureBytes(int width, int height, bool isStencil = true) {
    const auto rowSize = static_cast<std::size_t>((width * 24 + 31) / 32 * 4);
    std::string pixels(rowSize * static_cast<std::size_t>(height), '\0');
    if (!isStencil)
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                pixels[rowSize * static_cast<std::size_t>(y) + static_cast<std::size_t>(x) * 3 + 2] = '\xFF';
    return BitmapFile{width, height, 24, {}, pixels}.bytes();
}

} // namespace orvista
