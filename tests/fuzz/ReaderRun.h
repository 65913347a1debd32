#pragma once

#include "model/DeviceFileReaders.h"
#include "model/FileRemarks.h"
#include "model/Lines.h"
#include "model/Numbers.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace orvista::testing {

/// Ends the run as a finding when a property does not hold.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

/// Gives one input to a reader. An address that does not fit is the one thing a reader may throw for; what
/// came before it stays in the project.
inline void readBytes(std::string_view bytes, Project& project,
                      void (*read)(ByteSource&, Project&, TableReading*)) {
    MemorySource source(bytes);
    TableReading reading;
    try {
        read(source, project, &reading);
    } catch (const Overflow&) {
    }
}

inline std::string_view inputBytes(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Every row a message reader touched ends with a line end; the others are as they were.
template <typename Rows>
bool rowsAreWholeLines(const Rows& rows) {
    for (const std::string& text : rows)
        if (text != clearScript && !text.ends_with(lineEnd))
            return false;
    return true;
}

} // namespace orvista::testing
