#include "display/BitmapFaults.h"

#include "model/BitmapName.h"
#include "model/Quotation.h"
#include "script/BitmapNames.h"

namespace orvista {

namespace {

/// Empty where the display can show it.
std::string faultOf(const std::string& name, const BitmapProvider& bitmaps) {
    if (!isBitmapName(name))
        return "does not end in .bmp";
    const FoundBitmap found = bitmaps.bitmap(name);
    if (found.image)
        return {};
    return found.error ? std::string(description(*found.error)) : "is missing";
}

} // namespace

std::vector<std::string> bitmapFaults(std::span<const DrawnPage> pages, const BitmapProvider& bitmaps) {
    std::vector<std::string> faults;
    for (const std::string& name : bitmapNames(pages))
        if (const std::string fault = faultOf(name, bitmaps); !fault.empty())
            faults.push_back(printable(name) + " " + fault);
    return faults;
}

} // namespace orvista
