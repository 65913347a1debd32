#include "model/Bytes.h"

#include <algorithm>

namespace orvista {

std::string bytesUpTo(ByteSource& source, std::size_t most) {
    std::string bytes;
    std::string piece(std::min(most, std::size_t{1} << 16), '\0');
    while (bytes.size() < most) {
        const std::size_t count = source.read(piece.data(), std::min(piece.size(), most - bytes.size()));
        if (count == 0)
            break;
        bytes.append(piece, 0, count);
    }
    return bytes;
}

std::size_t MemorySource::read(char* buffer, std::size_t size) {
    const std::size_t count = std::min(size, rest_.size());
    std::copy_n(rest_.begin(), count, buffer);
    rest_.remove_prefix(count);
    return count;
}

} // namespace orvista
