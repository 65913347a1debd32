#pragma once

#include "display/ScriptInterpreter.h"

#include "model/Project.h"

#include <bitset>
#include <string_view>
#include <vector>

namespace orvista {

/// The order in which regular messages are shown, as indices from 0. A message may stand in it more than
/// once; one that it does not name is never shown.
struct PlayList {
    std::vector<std::size_t> messages;
    std::vector<ScriptRemark> remarks; ///< lines that name no message

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
