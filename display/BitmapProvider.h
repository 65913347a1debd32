#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orvista {

/// Where the bitmaps that scripts name come from.
class BitmapProvider {
public:
    virtual ~BitmapProvider() = default;
    /// The bytes of the BMP file of that name (Windows-1252, without a folder, ASCII case folded), or
    /// nothing.
    virtual std::optional<std::string> bitmap(std::string_view name) const = 0;
};

/// Bitmaps in memory.
class StoredBitmaps final : public BitmapProvider {
public:
    /// Replaces a bitmap of the same name.
    void store(std::string_view name, std::string bytes);
    void clear() { files_.clear(); }
    std::optional<std::string> bitmap(std::string_view name) const override;

private:
    std::map<std::string, std::string> files_;
};

} // namespace orvista
