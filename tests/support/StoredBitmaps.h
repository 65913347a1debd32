#pragma once

#include "display/BitmapProvider.h"
#include "model/Text.h"

#include <map>
#include <string>
#include <string_view>

namespace orvista {

/// Bitmaps in memory.
class StoredBitmaps final : public BitmapProvider {
public:
    /// Replaces a bitmap of the same name.
    void store(std::string_view name, std::string_view bytes) {
        files_[lowerAscii(name)] = decodedBitmap(bytes);
    }
    FoundBitmap bitmap(std::string_view name) const override {
        const auto found = files_.find(lowerAscii(name));
        return found == files_.end() ? FoundBitmap{} : found->second;
    }

private:
    std::map<std::string, FoundBitmap> files_;
};

} // namespace orvista
