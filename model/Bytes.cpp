#include "model/Bytes.h"

#include <algorithm>

namespace orvista {

std::size_t MemorySource::read(char* buffer, std::size_t size) {
    const std::size_t count = std::min(size, rest_.size());
    std::copy_n(rest_.begin(), count, buffer);
    rest_.remove_prefix(count);
    return count;
}

} // namespace orvista
