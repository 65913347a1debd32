#include "model/SystemPath.h"

namespace orvista {

namespace fs = std::filesystem;

fs::path systemPath(const std::string& utf8) {
#ifdef _WIN32
    try {
        return {std::u8string(utf8.begin(), utf8.end())};
    } catch (const fs::filesystem_error&) {
        return {}; // bytes that are no UTF-8 name no file here
    }
#else
    return {utf8}; // paths are bytes here; converting could refuse some
#endif
}

std::string utf8Path(const fs::path& path) {
#ifdef _WIN32
    try {
        const auto text = path.u8string();
        return {text.begin(), text.end()};
    } catch (const fs::filesystem_error&) {
        return {}; // half a surrogate pair, which no other path can hold
    }
#else
    return path.native();
#endif
}

} // namespace orvista
