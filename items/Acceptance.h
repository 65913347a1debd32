#pragma once

#include "model/Item.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What somebody saw who stood before a display and had it show its messages, one after the other. All texts
/// are UTF-8.
namespace orvista {

enum class SeenResult { AsShown, Wrong, Skipped };

/// "as shown", "wrong", "skipped"
std::string_view seenResultText(SeenResult result);

struct SeenMessage {
    Item message;
    SeenResult result = SeenResult::AsShown;
    std::string remark; ///< a line of at most longestRemark characters; may be empty
    std::string time;   ///< as utcText() writes it
    bool operator==(const SeenMessage&) const = default;
};

/// Of remarks and names, in characters.
inline constexpr std::size_t longestRemark = 1000;

struct Acceptance {
    std::string fingerprint; ///< of what the display held
    std::string address;     ///< of the display, as typed
    std::string time;        ///< when it began, as utcText() writes it
    std::string name;        ///< of the person, as typed; a line of at most longestRemark characters
    std::vector<SeenMessage> messages; ///< each once, in the order in which they were seen
    bool operator==(const Acceptance&) const = default;

    /// Null for one that was not seen.
    const SeenMessage* of(Item message) const;
    /// What was said of the message before no longer counts.
    void set(SeenMessage message);
};

} // namespace orvista
