#pragma once

#include "model/Project.h"

#include <bitset>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// A line of a play list that names no message.
struct PlayListRemark {
    std::size_t line; ///< from 1
    std::string text; ///< at most maximumRemarkLength bytes
    bool operator==(const PlayListRemark&) const = default;
};

/// The order in which regular messages are shown, as indices from 0. A message may stand in it more than
/// once; one that it does not name is never shown.
struct PlayList {
    std::vector<std::size_t> messages;
    std::vector<PlayListRemark> remarks; ///< the first maximumRemarks

    /// All 40 in order, as the editor writes it.
    static PlayList inOrder();
};

/// Reads lines "DISPMSG STDMSG7"; at most 1000 of them count.
PlayList readPlayList(std::string_view bytes);

/// Which messages are switched on.
struct MessageCoils {
    std::bitset<emergencyMessageCount> emergency;
    std::bitset<regularMessageCount> regular;
    bool operator==(const MessageCoils&) const = default;
};

} // namespace orvista
